#include "Implementation/DocumentEdits.h"

#include <algorithm>
#include <charconv>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Implementation/deepCopy.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine {

namespace {

/* The path up to its last slash, empty if there is none */
Containers::StringView parentOf(Containers::StringView path) {
    std::size_t size = path.size();
    while(size && path[size - 1] != '/')
        --size;
    return path.prefix(size ? size - 1 : 0);
}

/* What follows the last slash, empty if there is none */
Containers::StringView lastSegment(Containers::StringView path) {
    return path.isEmpty() ? path : path.exceptPrefix(parentOf(path).size() + 1);
}

/* The first segment, with its slash in front; empty if there is none */
Containers::StringView firstSegment(Containers::StringView path) {
    std::size_t size = path.isEmpty() ? 0 : 1;
    while(size < path.size() && path[size] != '/')
        ++size;
    return path.prefix(size);
}

bool namesIndex(Containers::StringView segment) {
    if(segment.hasPrefix('-'))
        segment = segment.exceptPrefix(1);
    for(const char c: segment)
        if(c < '0' || c > '9')
            return false;
    return !segment.isEmpty();
}

/* An index that is negative or doesn't fit 32 bits means the end */
constexpr std::uint32_t End = ~std::uint32_t{};

std::uint32_t indexOf(Containers::StringView segment) {
    std::int32_t n = 0;
    const auto parsed = std::from_chars(segment.begin(), segment.end(), n);
    return parsed.ec == std::errc{} && n >= 0 ? std::uint32_t(n) : End;
}

std::uint32_t insertionIndex(
    Containers::StringView segment, const JsonValue& array) {
    const std::uint32_t index = indexOf(segment);
    return index == End ? array.Size() : index;
}

/* Whether an index is written as in a JSON Pointer to that element */
bool isPointerIndex(Containers::StringView segment) {
    return namesIndex(segment) && segment[0] != '-' &&
        (segment[0] != '0' || segment.size() == 1) && indexOf(segment) != End;
}

bool isEmptyContainer(const JsonValue& value) {
    return (value.IsArray() && value.Empty()) ||
        (value.IsObject() && value.ObjectEmpty());
}

/* What directly contains the value, null if that is missing too */
JsonValue* parentAt(const DocumentPlace& place, Containers::StringView path) {
    return place.value || place.missing == parentOf(path).size()
        ? place.container
        : nullptr;
}

}

void DocumentEdits::attach(ProjectFile& project) {
    _project = &project;
    _index.clear();
    _names.clear();
}

DocumentPlace DocumentEdits::locate(Containers::StringView path) {
    return _index.locate(_project->document, path);
}

bool DocumentEdits::isElement(
    const DocumentPlace& place, Containers::StringView path) {
    const JsonValue* const parent = parentAt(place, path);
    return parent && parent->IsArray();
}

Containers::String DocumentEdits::addressablePath(
    Containers::StringView path, const DocumentPlace& place) {
    if(place.value || !path.hasPrefix('/'))
        return path;

    const Containers::StringView rest = path.exceptPrefix(place.missing);
    const Containers::StringView missing = firstSegment(rest);
    /* All that follows is new, so there's no other array to append to */
    Containers::String appended = missing == "/-" && place.container->IsArray()
        ? Utility::format("{}/{}{}", path.prefix(place.missing),
              place.container->Size(), rest.exceptPrefix(missing.size()))
        : Containers::String{path};

    const Containers::StringView segment = lastSegment(appended);
    const JsonValue* const parent = parentAt(place, path);
    if(!namesIndex(segment) || (parent && !parent->IsArray()) ||
        (!parent && indexOf(segment) != End))
        return appended;
    return Utility::format("{}/{}", parentOf(appended),
        parent ? insertionIndex(segment, *parent) : 0);
}

void DocumentEdits::apply(const Change& change) {
    const DocumentPlace place = locate(change.path);
    const bool mayBeNamed = !place.value && place.container &&
        place.container->IsArray() && (change.oldValue || change.newValue);
    if(!mayBeNamed) {
        perform(change, place);
        return;
    }
    const Containers::String address = addressOf(change.path);
    perform(change, {change.path, address}, locate(address));
}

void DocumentEdits::perform(const Change& change, const DocumentPlace& place) {
    perform(change, {change.path, change.path}, place);
}

void DocumentEdits::perform(
    const Change& change, const Path& path, const DocumentPlace& place) {
    if(!change.newValue)
        remove(path, place);
    else if(change.oldValue && (place.value || !isElement(place, path.address)))
        set(path, place, *change.newValue);
    else
        create(path, place, *change.newValue);
}

/* The path with the index in the place of each segment that names an element
   otherwise */
Containers::String DocumentEdits::addressOf(Containers::StringView path) {
    Containers::String out = path;
    for(;;) {
        const DocumentPlace place = locate(out);
        if(place.value || !place.container || !place.container->IsArray())
            return out;
        /* The rest is the same in both */
        const Containers::StringView missing =
            firstSegment(out.exceptPrefix(place.missing));
        const Containers::StringView rest =
            out.exceptPrefix(place.missing + missing.size());
        std::uint32_t index;
        if(!_names.find(path.exceptSuffix(rest.size()), index) ||
            index >= place.container->Size())
            return out;
        out =
            Utility::format("{}/{}{}", out.prefix(place.missing), index, rest);
    }
}

void DocumentEdits::erase(const Path& path, const DocumentPlace& place) {
    if(place.container->IsArray())
        _names.erased(path.recorded, parentOf(path.recorded), place.position,
            place.container->Size());
    _index.erase(place);
}

void DocumentEdits::remove(const Path& path, const DocumentPlace& place) {
    const JsonValue* container = place.container;
    if(!place.value)
        container = _index.find(_project->document, parentOf(path.address));
    else if(container)
        erase(path, place);

    /* What is left empty goes too, except for members of the root */
    Path at = path;
    while(container && isEmptyContainer(*container)) {
        at = {parentOf(at.recorded), parentOf(at.address)};
        if(parentOf(at.address).isEmpty())
            return;
        const DocumentPlace outer = locate(at.address);
        container = outer.container;
        erase(at, outer);
    }
}

JsonValue& DocumentEdits::createNull(
    const Path& path, const DocumentPlace& place) {
    if(place.container && place.container->IsArray() && !place.value) {
        const Containers::StringView rest =
            path.address.exceptPrefix(place.missing);
        const Containers::StringView segment = firstSegment(rest);
        /* One is appended on the way, or an object takes the array's place */
        if(segment == "/-")
            _names.add(path.recorded.exceptSuffix(rest.size() - segment.size()),
                place.container->Size());
        else if(!isPointerIndex(segment.exceptPrefix(1)))
            _names.forget(path.recorded.exceptSuffix(rest.size()));
    }
    return _index.create(place, _project->document, path.address,
        _project->document.GetAllocator());
}

void DocumentEdits::set(
    const Path& path, const DocumentPlace& place, const JsonValue& value) {
    deepAssign(createNull(path, place), value, _project->allocator());
}

void DocumentEdits::create(
    const Path& path, const DocumentPlace& place, const JsonValue& value) {
    const Containers::StringView segment = lastSegment(path.address);
    JsonValue* parent = parentAt(place, path.address);
    if(!namesIndex(segment) || (parent && parent->IsObject())) {
        set(path, place, value);
        return;
    }

    if(!parent) {
        const Path parentPath{parentOf(path.recorded), parentOf(path.address)};
        /* An editor's accessors may know a value where a pointer leads
           nowhere. It's a member then, whatever its name looks like. */
        const JsonValue* const stored =
            (*_project)[path.address].readValueNoDefault();
        const bool isMember =
            stored && !stored->IsObject() && !stored->IsArray();
        if(isMember)
            createNull(parentPath, locate(parentPath.address)).SetObject();
        /* The rules of pointers fill an array up to the index, and make an
           object if it's none as written, such as 007 */
        if(isMember || indexOf(segment) != End) {
            set(path, locate(path.address), value);
            return;
        }
        parent = &createNull(parentPath, locate(parentPath.address)).SetArray();
    }
    CORRADE_INTERNAL_ASSERT(parent->IsArray());
    insert(path, *parent, value);
}

void DocumentEdits::insert(
    const Path& path, JsonValue& array, const JsonValue& value) {
    const Containers::StringView segment = lastSegment(path.address);
    const std::uint32_t size = array.Size();
    const std::uint32_t index = insertionIndex(segment, array);
    extendArray(array, std::max(index, size) + 1, _project->allocator());
    array[array.Size() - 1] = deepCopy(value, _project->allocator());
    for(std::uint32_t i = array.Size() - 1; i > index; --i)
        array[i].Swap(array[i - 1]);

    if(index < size)
        _names.inserted(parentOf(path.recorded), index);
    if(!isPointerIndex(segment))
        _names.add(path.recorded, index);
}

}
