#include "shared/Implementation/ObjectIndex.h"

#include <algorithm>
#include <cstring>
#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/NameHash.h"

namespace OrrelinEngine {

namespace {

/* So many searches of an object come before its index: one that is looked into
   just once isn't worth the ten times that making the index takes */
constexpr std::uint32_t FirstSearches = 2;
/* After that many searches which the index should have spared, making it anew
   is cheaper than going on */
constexpr std::uint32_t MaxSearches = 16;
constexpr std::uint32_t Free = ~std::uint32_t{};

Containers::StringView nameAt(const JsonValue& object, std::uint32_t position) {
    const JsonValue& name =
        (object.MemberBegin() + std::ptrdiff_t(position))->name;
    return {name.GetString(), name.GetStringLength()};
}

bool isNamed(const JsonValue& object, std::uint32_t position,
    Containers::StringView name) {
    const Containers::StringView n = nameAt(object, position);
    return n.size() == name.size() &&
        (name.isEmpty() ||
            std::memcmp(n.data(), name.data(), name.size()) == 0);
}

std::uint32_t hashOf(Containers::StringView name) {
    return std::uint32_t(nameHash(name));
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

/* Of members with one name only the first is worth a hint, and thousands of
   them would make a row in the table that each look-up goes along */
void ObjectIndex::insertNew(const JsonValue& object, std::uint32_t position) {
    const Containers::StringView name = nameAt(object, position);
    const std::uint32_t hash = hashOf(name);
    if(findHinted(object, name, hash) < position)
        _hasDuplicates = true;
    else
        insert(hash, position);
}

void ObjectIndex::extend(const JsonValue& object) {
    const std::uint32_t count = object.MemberCount();
    growTable(_used + count - _count);
    for(; _count != count; ++_count)
        insertNew(object, _count);
}

void ObjectIndex::rebuild(const JsonValue& object) {
    _slots.clear();
    _used = 0;
    _count = 0;
    _surprises = 0;
    _hasDuplicates = false;
    extend(object);
}

std::uint32_t ObjectIndex::findHinted(const JsonValue& object,
    Containers::StringView name, std::uint32_t hash) const {
    const std::uint32_t count = object.MemberCount();
    /* If some members were erased directly, those behind them moved up by as
       many at most */
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

std::uint32_t ObjectIndex::search(
    const JsonValue& object, Containers::StringView name, std::uint32_t hash) {
    const std::uint32_t found = searchMember(object, name);
    if(found != object.MemberCount()) {
        ++_surprises;
        growTable(_used + 1);
        insert(hash, found);
    } else if(_promise && ++_vainSearches > MaxSearches) {
        rebuild(object);
        _complete = true;
    }
    return found;
}

std::uint32_t ObjectIndex::find(const JsonValue& object,
    Containers::StringView name, std::uint64_t promise) {
    const std::uint32_t count = object.MemberCount();
    if(_slots.empty() && _searches < FirstSearches) {
        ++_searches;
        return searchMember(object, name);
    }
    if(promise != _promise) {
        _promise = promise;
        _vainSearches = 0;
        _complete = false;
    }
    /* The hints aren't in step, or even the promise wasn't kept */
    if(!promise || count != _count)
        _complete = false;
    if(_slots.empty() || _surprises > MaxSearches)
        rebuild(object);
    else if(count > _count)
        extend(object);

    const std::uint32_t hash = hashOf(name);
    const std::uint32_t hinted = findHinted(object, name, hash);
    return hinted != count || _complete ? hinted : search(object, name, hash);
}

void ObjectIndex::appended(const JsonValue& object) {
    /* If it wasn't in step with the object, the next look-up extends it */
    if(_slots.empty() || _count + 1 != object.MemberCount())
        return;
    growTable(_used + 1);
    insert(hashOf(nameAt(object, _count)), _count);
    ++_count;
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
    const std::uint32_t hash = hashOf(nameAt(object, position));
    const bool inStep = !_slots.empty() && _count == object.MemberCount();
    object.EraseMember(object.MemberBegin() + std::ptrdiff_t(position));
    /* Otherwise the hints stay those of what was, as after a direct edit */
    if(!inStep)
        return;
    --_count;
    /* Another member of that name may be there, which has no hint */
    if(_hasDuplicates)
        _complete = false;

    const std::size_t slot = slotOf(hash, position);
    if(_slots[slot].position != Free)
        freeSlot(slot);
    if(position == _count)
        return;
    for(Slot& i: _slots)
        i.position -= i.position > position && i.position != Free;
}

}
