#include "Implementation/DocumentEdits.h"

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

/* The first segment, with its slash in front */
Containers::StringView firstSegment(Containers::StringView path) {
    std::size_t size = 1;
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

/* Whether an array takes it for an element although it isn't how a JSON Pointer
   names one */
bool isUnaddressable(Containers::StringView segment) {
    if(!namesIndex(segment))
        return segment == "-";
    return segment[0] == '-' || (segment[0] == '0' && segment.size() > 1) ||
        indexOf(segment) == End;
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
    const Containers::String appended =
        missing == "/-" && place.container->IsArray()
        ? Utility::format("{}/{}{}", path.prefix(place.missing),
              place.container->Size(), rest.exceptPrefix(missing.size()))
        : Containers::String{path};

    const Containers::StringView segment = lastSegment(appended);
    const JsonValue* const parent = parentAt(place, path);
    if(!namesIndex(segment) || (parent && !parent->IsArray()))
        return appended;
    if(!parent && indexOf(segment) != End)
        return appended;
    return Utility::format("{}/{}", parentOf(appended),
        parent ? insertionIndex(segment, *parent) : 0);
}

void DocumentEdits::perform(const Change& change, DocumentPlace place) {
    Containers::StringView path = change.path;
    Containers::String address;
    if(!place.value && change.oldValue &&
        findAgain(_project->document, path, *change.oldValue, address)) {
        path = address;
        place = locate(path);
    }

    if(!change.newValue)
        remove(path, place);
    else if(change.oldValue && (place.value || !isElement(place, path)))
        set(path, place, *change.newValue);
    else
        create(path, place, *change.newValue);
}

/* A member named "-5", "007" or "-", removed together with its object, comes
   back as the element of an array if a number in its path makes one of it, as
   nothing tells that there was an object. The path that is recorded doesn't
   lead there, so without this a redo wouldn't remove it, and the undo after
   that would add it once more. The value tells which element it is, and of
   equal ones it doesn't matter. */
bool DocumentEdits::findAgain(JsonValue& from, Containers::StringView path,
    const JsonValue& expected, Containers::String& address) {
    const DocumentPlace place = _index.locate(from, path);
    if(place.value) {
        address = path;
        return deepEqual(*place.value, expected);
    }

    const Containers::StringView rest = path.exceptPrefix(place.missing);
    if(!place.container || !place.container->IsArray() || rest.isEmpty())
        return false;
    const Containers::StringView missing = firstSegment(rest);
    if(!isUnaddressable(missing.exceptPrefix(1)))
        return false;
    JsonValue& array = *place.container;
    for(std::uint32_t i = array.Size(); i--;)
        if(findAgain(array[i], rest.exceptPrefix(missing.size()), expected,
               address)) {
            address = Utility::format(
                "{}/{}{}", path.prefix(place.missing), i, address);
            return true;
        }
    return false;
}

void DocumentEdits::remove(
    Containers::StringView path, const DocumentPlace& place) {
    const JsonValue* container = place.container;
    if(!place.value)
        container = _index.find(_project->document, parentOf(path));
    else if(container)
        _index.erase(place);

    /* What is left empty goes too, except for members of the root */
    for(Containers::StringView at = parentOf(path);
        container && isEmptyContainer(*container); at = parentOf(at)) {
        if(parentOf(at).isEmpty())
            return;
        const DocumentPlace outer = locate(at);
        container = outer.container;
        _index.erase(outer);
    }
}

JsonValue& DocumentEdits::createNull(
    Containers::StringView path, const DocumentPlace& place) {
    return _index.create(
        place, _project->document, path, _project->document.GetAllocator());
}

void DocumentEdits::set(Containers::StringView path, const DocumentPlace& place,
    const JsonValue& value) {
    deepAssign(createNull(path, place), value, _project->allocator());
}

void DocumentEdits::create(Containers::StringView path,
    const DocumentPlace& place, const JsonValue& value) {
    const Containers::StringView segment = lastSegment(path);
    const Containers::StringView parentPath = parentOf(path);
    JsonValue* parent = parentAt(place, path);
    if(!namesIndex(segment) || (parent && parent->IsObject())) {
        set(path, place, value);
        return;
    }

    if(!parent) {
        /* An editor's accessors may know a value where a pointer leads
           nowhere. It's a member then, whatever its name looks like. */
        const JsonValue* const stored = (*_project)[path].readValueNoDefault();
        const bool isMember =
            stored && !stored->IsObject() && !stored->IsArray();
        if(isMember)
            createNull(parentPath, locate(parentPath)).SetObject();
        /* The rules of pointers fill an array up to the index, and make an
           object if it's none as written, such as 007 */
        if(isMember || indexOf(segment) != End) {
            set(path, locate(path), value);
            return;
        }
        parent = &createNull(parentPath, locate(parentPath)).SetArray();
    }
    CORRADE_INTERNAL_ASSERT(parent->IsArray());
    insert(*parent, insertionIndex(segment, *parent), value);
}

void DocumentEdits::insert(
    JsonValue& array, std::uint32_t index, const JsonValue& value) {
    /* Not the sixteen elements that RapidJSON begins with, nor one at a time
       where there are many nulls to come */
    if(array.Empty() || index > array.Size())
        array.Reserve(index + 1, _project->allocator());
    while(array.Size() < index)
        array.PushBack(JsonValue{}, _project->allocator());
    array.PushBack(
        deepCopy(value, _project->allocator()), _project->allocator());
    for(std::uint32_t i = array.Size() - 1; i > index; --i)
        array[i].Swap(array[i - 1]);
}

}
