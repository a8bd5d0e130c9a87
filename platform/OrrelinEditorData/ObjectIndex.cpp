#include "ObjectIndex.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string_view>
#include <Corrade/Containers/StringView.h>

namespace OrrelinEngine {

namespace {

/* After that many searches of an object, building its index anew is cheaper */
constexpr std::uint32_t MaxSearches = 16;
constexpr std::uint32_t Free = ~std::uint32_t{};

std::uint32_t hashOf(const char* data, std::size_t size) {
    const std::size_t hash =
        std::hash<std::string_view>{}(std::string_view{data, size});
    return std::uint32_t(hash ^ (hash >> 32));
}

const JsonValue::Member& memberAt(
    const JsonValue& object, std::uint32_t position) {
    return *(object.MemberBegin() + std::ptrdiff_t(position));
}

bool isNamed(const JsonValue& object, std::uint32_t position,
    Containers::StringView name) {
    const JsonValue& n = memberAt(object, position).name;
    return n.GetStringLength() == name.size() &&
        (name.isEmpty() ||
            std::memcmp(n.GetString(), name.data(), name.size()) == 0);
}

}

std::uint32_t searchMember(
    const JsonValue& object, Containers::StringView name) {
    const std::uint32_t count = object.MemberCount();
    std::uint32_t i = 0;
    while(i != count && !isNamed(object, i, name))
        ++i;
    return i;
}

void ObjectIndex::growTable(std::size_t memberCount) {
    std::size_t size = 128;
    while(size < memberCount * 2)
        size *= 2;
    if(size <= _slots.size())
        return;

    std::vector<Slot> old = std::move(_slots);
    _slots.assign(size, Slot{0, Free});
    _used = 0;
    for(const Slot& slot: old)
        if(slot.position != Free)
            insert(slot.hash, slot.position);
}

void ObjectIndex::insert(std::uint32_t hash, std::uint32_t position) {
    const std::size_t mask = _slots.size() - 1;
    std::size_t i = hash & mask;
    while(_slots[i].position != Free)
        i = (i + 1) & mask;
    _slots[i] = {hash, position};
    ++_used;
}

void ObjectIndex::extend(const JsonValue& object) {
    const std::uint32_t count = object.MemberCount();
    growTable(_used + count - _count);
    for(; _count != count; ++_count) {
        const JsonValue& name = memberAt(object, _count).name;
        insert(hashOf(name.GetString(), name.GetStringLength()), _count);
    }
    rememberLast(object);
}

void ObjectIndex::rememberLast(const JsonValue& object) {
    if(!_count)
        return;
    const JsonValue& name = memberAt(object, _count - 1).name;
    _lastName = name.GetString();
    _lastHash = hashOf(name.GetString(), name.GetStringLength());
}

bool ObjectIndex::lastStands(const JsonValue& object) const {
    if(!_count || object.MemberCount() < _count)
        return false;
    const JsonValue& name = memberAt(object, _count - 1).name;
    return name.GetString() == _lastName &&
        hashOf(name.GetString(), name.GetStringLength()) == _lastHash;
}

void ObjectIndex::checkComplete(const JsonValue& object) {
    /* Whatever was removed and added directly, the member at the end of those
       that are known is another one then */
    if(_complete && !lastStands(object)) {
        _complete = false;
        _vainSearches = 0;
    }
}

void ObjectIndex::rebuild(const JsonValue& object) {
    _slots.clear();
    _used = 0;
    _count = 0;
    _surprises = 0;
    extend(object);
}

std::uint32_t ObjectIndex::findHinted(const JsonValue& object,
    Containers::StringView name, std::uint32_t hash) const {
    const std::uint32_t count = object.MemberCount();
    /* If members were erased directly, what followed them moved up */
    const std::uint32_t moved =
        count < _count ? std::min(_count - count, MaxSearches) : 0;

    std::uint32_t found = count;
    const std::size_t mask = _slots.size() - 1;
    for(std::size_t i = hash & mask; _slots[i].position != Free;
        i = (i + 1) & mask) {
        if(_slots[i].hash != hash)
            continue;
        const std::uint32_t hint = _slots[i].position;
        for(std::uint32_t by = 0; by <= moved && by <= hint; ++by)
            /* Of members with the same name the first one is meant */
            if(hint - by < found && isNamed(object, hint - by, name)) {
                found = hint - by;
                break;
            }
    }
    return found;
}

std::uint32_t ObjectIndex::find(
    const JsonValue& object, Containers::StringView name, std::uint64_t epoch) {
    const std::uint32_t count = object.MemberCount();
    if(_slots.empty() || _surprises > MaxSearches)
        rebuild(object);
    if(!epoch || epoch != _epoch) {
        _epoch = epoch;
        _vainSearches = 0;
        _complete = false;
    }
    if(count != _count)
        checkComplete(object);
    if(count > _count)
        extend(object);

    const std::uint32_t hash = hashOf(name.data(), name.size());
    const std::uint32_t hinted = findHinted(object, name, hash);
    if(hinted != count)
        return hinted;
    checkComplete(object);
    if(_complete)
        return count;

    const std::uint32_t searched = searchMember(object, name);
    if(searched != count) {
        ++_surprises;
        growTable(_used + 1);
        insert(hash, searched);
    } else if(++_vainSearches > MaxSearches) {
        rebuild(object);
        _complete = true;
    }
    return searched;
}

void ObjectIndex::appended(const JsonValue& object) {
    /* If it wasn't in step with the object, the next look-up extends it */
    if(_count + 1 == object.MemberCount())
        extend(object);
}

std::size_t ObjectIndex::slotOf(
    std::uint32_t hash, std::uint32_t position) const {
    const std::size_t mask = _slots.size() - 1;
    std::size_t i = hash & mask;
    while(_slots[i].position != Free && _slots[i].position != position)
        i = (i + 1) & mask;
    return i;
}

void ObjectIndex::freeSlot(std::size_t slot) {
    /* What was put after it for want of a free slot moves up, so that no
       probing sequence is cut */
    const std::size_t mask = _slots.size() - 1;
    for(;;) {
        std::size_t i = slot;
        do {
            i = (i + 1) & mask;
        } while(_slots[i].position != Free &&
            ((i - _slots[i].hash) & mask) < ((i - slot) & mask));
        _slots[slot] = _slots[i];
        if(_slots[i].position == Free)
            break;
        slot = i;
    }
    --_used;
}

void ObjectIndex::erase(JsonValue& object, std::uint32_t position) {
    checkComplete(object);
    const JsonValue& name = memberAt(object, position).name;
    const std::uint32_t hash = hashOf(name.GetString(), name.GetStringLength());
    object.EraseMember(object.MemberBegin() + std::ptrdiff_t(position));
    /* If it wasn't in step with the object, its hints stay hints */
    if(_count != object.MemberCount() + 1)
        return;
    --_count;
    rememberLast(object);

    const std::size_t slot = slotOf(hash, position);
    if(_slots[slot].position != Free)
        freeSlot(slot);
    if(position == _count)
        return;
    for(Slot& i: _slots)
        i.position -= i.position > position && i.position != Free;
}

}
