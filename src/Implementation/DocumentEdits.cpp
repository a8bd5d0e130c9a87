/* A change is performed in one of three ways:

   -    Without a new value, it removes: erases the value and then prunes, from
        the inside out, each container that this leaves empty, up to but not
        including the members of the root.
   -    With both values, it sets what is there.
   -    With a new value only, it creates. If the last segment is an index of an
        array, this inserts, and what follows moves down by one: undo of a
        removal thus puts the element back between its old neighbours.

   Insertion and removal renumber the elements behind. The paths in the history
   aren't adjusted: by the time that undo or redo reaches a change, the document
   is again as it was around that change, so the path is right.

   This fails for a path that isn't a JSON Pointer to its element. A push
   records the address instead, see addressablePath(). For the others, such as a
   member "007" that comes back as an element, _names keeps the index by the
   path as recorded. So each Path holds both forms, and all that moves elements
   with a name has to tell _names. From the segment on where the document ends,
   both forms are the same, which allows to cut the same suffix off both. */

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

/* The path behind its last slash, empty if there is none */
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

/* Whether all of it is digits, maybe behind a minus: an index as a creation
   understands it, of which PointerTokens takes just some */
bool namesIndex(Containers::StringView segment) {
    if(segment.hasPrefix('-'))
        segment = segment.exceptPrefix(1);
    for(const char c: segment)
        if(c < '0' || c > '9')
            return false;
    return !segment.isEmpty();
}

/* An index that is negative or doesn't fit a signed 32-bit integer means the
   end of the array */
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

/* Whether the segment, as it's written, leads to the element that a creation
   makes of it */
bool isPointerIndex(Containers::StringView segment) {
    return namesIndex(segment) && segment[0] != '-' &&
        (segment[0] != '0' || segment.size() == 1) && indexOf(segment) != End;
}

bool isEmptyContainer(const JsonValue& value) {
    return (value.IsArray() && value.Empty()) ||
        (value.IsObject() && value.ObjectEmpty());
}

/* The direct container of the value; null if that is missing as well, so that
   place.container is one further out */
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
    /* Only the first missing segment can append: all behind it is created below
       it, so there's no array yet */
    Containers::String appended = missing == "/-" && place.container->IsArray()
        ? Utility::format("{}/{}{}", path.prefix(place.missing),
              place.container->Size(), rest.exceptPrefix(missing.size()))
        : Containers::String{path};

    /* Left as it is where create() sets by the rules of pointers: a member of
       an object, and an index in an array that is yet to be made. "-5" in the
       latter is the first element. */
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
    /* Only where a path stops at an array can the next segment be the name of
       an element. A change without values has no element to look for. */
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
    /* A modification whose element is gone, by a direct edit or a drag, inserts
       it, like a creation */
    if(!change.newValue)
        remove(path, place);
    else if(change.oldValue && (place.value || !isElement(place, path.address)))
        set(path, place, *change.newValue);
    else
        create(path, place, *change.newValue);
}

/* The path with each segment that is the name of an element replaced by its
   index. One segment per turn, from the front: what is behind can only be
   looked up once the path leads there. */
Containers::String DocumentEdits::addressOf(Containers::StringView path) {
    Containers::String out = path;
    for(;;) {
        const DocumentPlace place = locate(out);
        if(place.value || !place.container || !place.container->IsArray())
            return out;
        /* Names are kept by recorded path. The rest is the same in both, so
           without it that is a prefix of the path. */
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
    /* Before the index erases, as the size is that with the element */
    if(place.container->IsArray())
        _names.erased(path.recorded, parentOf(path.recorded), place.position,
            place.container->Size());
    _index.erase(place);
}

void DocumentEdits::remove(const Path& path, const DocumentPlace& place) {
    /* Pruning goes on from the parent even if the value isn't there */
    const JsonValue* container = place.container;
    if(!place.value)
        container = _index.find(_project->document, parentOf(path.address));
    else if(container)
        erase(path, place);

    /* Members of the root stay, even empty. The container of the root itself is
       null, so there's nothing to do if that is the value. */
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

/* The value at the path, created as null if it's absent */
JsonValue& DocumentEdits::createNull(
    const Path& path, const DocumentPlace& place) {
    /* The path runs into an array that goes on differently. "-" appends to it:
       remember the element by that name. A segment that isn't an index makes an
       object of the array: its elements are lost, and so are their names. */
    if(place.container && place.container->IsArray() && !place.value) {
        const Containers::StringView rest =
            path.address.exceptPrefix(place.missing);
        const Containers::StringView segment = firstSegment(rest);
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
        /* An editor's accessors may find a value where a pointer leads nowhere.
           It's a member then, even if its name looks like an index. */
        const JsonValue* const stored =
            (*_project)[path.address].readValueNoDefault();
        const bool isMember =
            stored && !stored->IsObject() && !stored->IsArray();
        if(isMember)
            createNull(parentPath, locate(parentPath.address)).SetObject();
        /* The rules of pointers do what is wanted: they make an array and fill
           it up to the index or, for one such as "007", make an object */
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
    /* RapidJSON can't insert. The value goes to the end and changes places with
       its neighbours until it's at the index. Beyond the end, it stays where it
       is, behind the nulls. */
    const std::uint32_t size = array.Size();
    const std::uint32_t index = insertionIndex(segment, array);
    extendArray(array, std::max(index, size) + 1, _project->allocator());
    array[array.Size() - 1] = deepCopy(value, _project->allocator());
    for(std::uint32_t i = array.Size() - 1; i > index; --i)
        array[i].Swap(array[i - 1]);

    /* In this order, as the new element's own index doesn't move */
    if(index < size)
        _names.inserted(parentOf(path.recorded), index);
    if(!isPointerIndex(segment))
        _names.add(path.recorded, index);
}

}
