/* Each large object has an ObjectIndex under the address of its members, the
   one thing about an object that stays the same however it's reached. Nobody
   says when that stops being right: a direct edit may free the members, grow
   them elsewhere or put another object in their place. So

   -    a wrong index must do no harm, which ObjectIndex sees to by checking,
   -    when we grow an object ourselves, its index moves along,
   -    an index that nobody asks for anymore is dropped by sweep(). */

#include "shared/Implementation/DocumentIndex.h"

#include <algorithm>
#include <Corrade/Utility/Assert.h>

#include "shared/Implementation/PointerTokens.h"

namespace OrrelinEngine {

namespace {

/* In objects with fewer members a search is as fast as an index */
constexpr std::uint32_t LargeObject = 48;
/* With fewer members in all indexed objects, no sweep is worth it */
constexpr std::size_t MinSweep = 65536;

const void* membersOf(const JsonValue& object) {
    return &*object.MemberBegin();
}

JsonValue& childAt(JsonValue& parent, std::uint32_t position) {
    return parent.IsArray()
        ? parent[position]
        : (parent.MemberBegin() + std::ptrdiff_t(position))->value;
}

}

void extendArray(
    JsonValue& array, std::uint32_t size, JsonAllocator& allocator) {
    const std::uint32_t capacity = array.Capacity();
    if(size > capacity)
        array.Reserve(std::max(size, capacity + capacity / 2), allocator);
    while(array.Size() < size)
        array.PushBack(JsonValue{}, allocator);
}

void DocumentIndex::clear() {
    _objects.clear();
    _lastMembers = nullptr;
    _members = 0;
    /* A promise that is open now was given for the other document */
    ++_promise;
}

/* Drops the indices of objects that weren't asked for since the last sweep,
   such as those that left the document. The next sweep comes at twice the
   members that stay, so sweeping is constant on average for each member that's
   added. */
void DocumentIndex::sweep() {
    _lastMembers = nullptr;
    _members = 0;
    for(auto i = _objects.begin(); i != _objects.end();) {
        if(!i->second.usedSinceSweep) {
            i = _objects.erase(i);
            continue;
        }
        i->second.usedSinceSweep = false;
        _members += i->second.size();
        ++i;
    }
    _sweepAt = std::max(_members * 2, MinSweep);
}

ObjectIndex& DocumentIndex::addIndex(const JsonValue& object) {
    if(_members + object.MemberCount() > _sweepAt)
        sweep();
    _members += object.MemberCount();
    return _objects[membersOf(object)];
}

ObjectIndex* DocumentIndex::indexOf(const JsonValue& object) {
    if(object.MemberCount() < LargeObject)
        return nullptr;
    const void* const members = membersOf(object);
    if(members != _lastMembers) {
        const auto found = _objects.find(members);
        _lastIndex =
            found == _objects.end() ? &addIndex(object) : &found->second;
        _lastMembers = members;
    }
    _lastIndex->usedSinceSweep = true;
    return _lastIndex;
}

std::uint32_t DocumentIndex::position(
    JsonValue& object, Containers::StringView name) {
    ObjectIndex* const index = indexOf(object);
    return index ? index->find(object, name, _promises ? _promise : 0)
                 : searchMember(object, name);
}

JsonValue& DocumentIndex::addMember(
    JsonValue& object, Containers::StringView name, JsonAllocator& allocator) {
    ObjectIndex* const index = indexOf(object);
    const void* const before = index ? membersOf(object) : nullptr;

    object.AddMember(JsonValue{name.data() ? name.data() : "",
                         rapidjson::SizeType(name.size()), allocator},
        JsonValue{}, allocator);

    if(index) {
        /* To have room, the members may have moved in memory: their index
           follows, in place of one that was left there by earlier members */
        const void* const after = membersOf(object);
        if(after != before) {
            auto node = _objects.extract(before);
            _objects.erase(after);
            node.key() = after;
            _objects.insert(std::move(node));
            _lastMembers = after;
            _lastIndex = index;
        }
        index->appended(object);
    }
    return (object.MemberEnd() - 1)->value;
}

/* Whether the parent has the child that the current token names, and where */
bool DocumentIndex::child(JsonValue& parent, const PointerTokens& tokens,
    std::uint32_t& childPosition) {
    if(parent.IsObject()) {
        childPosition = position(parent, tokens.name());
        return childPosition != parent.MemberCount();
    }
    if(!parent.IsArray())
        return false;
    childPosition = tokens.index();
    return childPosition < parent.Size();
}

DocumentPlace DocumentIndex::locate(
    JsonValue& root, Containers::StringView pointer) {
    DocumentPlace place;
    PointerTokens tokens{pointer};
    JsonValue* value = &root;
    for(std::size_t begin = 0; tokens.next(); begin = tokens.offset()) {
        place.container = value;
        if(!child(*value, tokens, place.position)) {
            place.missing = begin;
            return place;
        }
        value = &childAt(*value, place.position);
    }
    place.missing = tokens.offset();
    if(tokens.reachedEnd())
        place.value = value;
    return place;
}

JsonValue& DocumentIndex::create(DocumentPlace place, JsonValue& root,
    Containers::StringView pointer, JsonAllocator& allocator) {
    if(place.value)
        return *place.value;
    CORRADE_ASSERT(PointerTokens::isValid(pointer),
        "DocumentIndex::create():" << pointer << "is no JSON Pointer", root);

    /* `value` is in the document already in the first turn, later it's the null
       that the turn before created */
    JsonValue* value = place.container;
    PointerTokens tokens{pointer.exceptPrefix(place.missing)};
    while(tokens.next()) {
        const std::uint32_t index = tokens.index();
        if(value->IsArray() && tokens.name() == "-") {
            extendArray(*value, value->Size() + 1, allocator);
            value = &(*value)[value->Size() - 1];
            continue;
        }
        /* An array that the name can't index gives way to an object, too */
        if(index == PointerTokens::NoIndex && !value->IsObject())
            value->SetObject();
        else if(!value->IsArray() && !value->IsObject())
            value->SetArray();

        if(value->IsObject())
            value = &addMember(*value, tokens.name(), allocator);
        else {
            extendArray(*value, index + 1, allocator);
            value = &(*value)[index];
        }
    }
    return *value;
}

void DocumentIndex::erase(const DocumentPlace& place) {
    CORRADE_INTERNAL_ASSERT(place.value && place.container);
    JsonValue& container = *place.container;
    if(container.IsArray())
        container.Erase(container.Begin() + place.position);
    else if(ObjectIndex* const index = indexOf(container))
        index->erase(container, place.position);
    else
        container.EraseMember(
            container.MemberBegin() + std::ptrdiff_t(place.position));
}

}
