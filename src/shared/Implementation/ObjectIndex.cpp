/* A hash table with linear probing, of the hash of each name and the position
   that its member had. It holds no names. They are compared in the object, so
   a member that is found always has the name, and a stale hint costs only time.

   A name without a right hint is searched for, since a direct edit may have
   brought it. That must not happen too often:

   -    Appended members show in the count and get hints.
   -    Erased members show in it, too. The others moved up by no more than are
        missing, so a few positions in front of each hint are tried.
   -    After MaxSearches surprises, the table is built anew.
   -    After MaxSearches searches in vain under a promise, it's built anew, and
        _complete says that from now on a name without a hint is absent. Every
        doubt clears it: another promise, none, or a count that differs. */

#include "shared/Implementation/ObjectIndex.h"

#include <algorithm>
#include <cstring>
#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/NameHash.h"

namespace OrrelinEngine {

namespace {

/* The first searches of an object are made without an index, since making one
   takes ten times as long and many objects are looked into just once */
constexpr std::uint32_t FirstSearches = 2;
/* After so many searches that an index should have spared, making it anew is
   cheaper than going on */
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

/* Half of the hash is enough here, as each hint is checked */
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

/* Makes room for so many hints. At most half of the slots are used, so probing
   ends soon, and it ends at all. */
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

/* Adds a hint for the first member of each name only. Hints for thousands with
   one name would make a row in the table that each look-up goes along. */
void ObjectIndex::insertNew(const JsonValue& object, std::uint32_t position) {
    const Containers::StringView name = nameAt(object, position);
    const std::uint32_t hash = hashOf(name);
    if(findHinted(object, name, hash) < position)
        _hasDuplicates = true;
    else
        insert(hash, position);
}

/* Adds hints for the members that were appended since */
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

/* Position of the first member of that name to which a hint leads, or the
   number of members if none does */
std::uint32_t ObjectIndex::findHinted(const JsonValue& object,
    Containers::StringView name, std::uint32_t hash) const {
    const std::uint32_t count = object.MemberCount();
    /* So many members were erased by direct edits, so no other moved up by
       more. Limited, as after that many a table made anew is cheaper. */
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
            /* Several members may have the name, of which the first counts.
               `found` begins as the count, so this also rejects hints beyond
               the end. */
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
        /* The stale hint stays in the table until that is built anew */
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
    /* Between two promises anybody may have edited */
    if(promise != _promise) {
        _promise = promise;
        _vainSearches = 0;
        _complete = false;
    }
    /* A count that differs although all members had hints means that somebody
       broke the promise: go on as without */
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
    /* If the hints weren't in step with the object, they don't get this one.
       The next look-up sees the count and adds it. */
    if(_slots.empty() || _count + 1 != object.MemberCount())
        return;
    growTable(_used + 1);
    insert(hashOf(nameAt(object, _count)), _count);
    ++_count;
}

/* The slot that holds the hint, or the free one that ends the search for it */
std::size_t ObjectIndex::slotOf(
    std::uint32_t hash, std::uint32_t position) const {
    const std::size_t mask = _slots.size() - 1;
    std::size_t i = hash & mask;
    while(_slots[i].position != Free && _slots[i].position != position)
        i = (i + 1) & mask;
    return i;
}

/* Look-ups stop at a free slot, so just freeing one would hide the hints that
   were put behind it because it was taken. Instead, the gap is filled with the
   next hint that may be there, which leaves a gap to fill at its old slot, and
   so on to the end of the row. */
void ObjectIndex::freeSlot(std::size_t slot) {
    const std::size_t mask = _slots.size() - 1;
    for(;;) {
        /* Skips hints that are less far from where their hash puts them than
           from the gap: in the gap, they would be in front of that */
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
    /* Hints that weren't in step can't follow. They are left behind as by
       a direct edit, which the next look-up copes with. */
    if(!inStep)
        return;
    --_count;
    /* A second member of that name may be left, and it has no hint */
    if(_hasDuplicates)
        _complete = false;

    const std::size_t slot = slotOf(hash, position);
    if(_slots[slot].position != Free)
        freeSlot(slot);
    /* All behind move up, unless it was the last one. The loop costs about as
       much as moving the members themselves did. */
    if(position == _count)
        return;
    for(Slot& i: _slots)
        i.position -= i.position > position && i.position != Free;
}

}
