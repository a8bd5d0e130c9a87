#ifndef Orrelin_shared_Implementation_ObjectIndex
#define Orrelin_shared_Implementation_ObjectIndex

#include <cstdint>
#include <vector>
#include <rapidjson/document.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Position of the first member of that name, or the number of members if it's
   absent. Linear in the number of members. */
std::uint32_t searchMember(
    const JsonValue& object, Containers::StringView name);

/* Finds the members of one large object by name. It holds hints only: the
   object may have been edited in any way since, so each hint is checked against
   it, and names without one are searched for. */
class ObjectIndex {
public:
    /* Position of the member, or the number of members if it's absent. The
       promise is the number of a time in which only this index edits the
       object, or 0 if anybody may have edited it since the last call. Absent
       names are remembered only while it stays the same and isn't 0. */
    std::uint32_t find(const JsonValue& object, Containers::StringView name,
        std::uint64_t promise);

    /* A member was appended, with a name that the object didn't have */
    void appended(const JsonValue& object);

    /* Erases the member at the given position, those behind move up. Linear in
       the number of members, except for the last one. */
    void erase(JsonValue& object, std::uint32_t position);

    /* How many members it has hints for, about */
    std::size_t size() const { return _count; }

    /* Set by every use, cleared by each sweep of the document's index */
    bool usedSinceSweep = true;

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t position; /* Free if ~0 */
    };

    void rebuild(const JsonValue& object);
    void extend(const JsonValue& object);
    void insertNew(const JsonValue& object, std::uint32_t position);
    void insert(std::uint32_t hash, std::uint32_t position);
    void growTable(std::size_t memberCount);
    std::uint32_t findHinted(const JsonValue& object,
        Containers::StringView name, std::uint32_t hash) const;
    std::uint32_t search(const JsonValue& object, Containers::StringView name,
        std::uint32_t hash);
    std::size_t slotOf(std::uint32_t hash, std::uint32_t position) const;
    void freeSlot(std::size_t slot);

    /* A hash table; empty before it's worth one, then never full. Its size is
       a power of two. */
    std::vector<Slot> _slots;
    std::size_t _used = 0;
    /* How many members the object had when the hints were last in step with
       it: all members in front of this had a hint then */
    std::uint32_t _count = 0;
    /* Searches before there were hints */
    std::uint32_t _searches = 0;
    /* Searches that found a member which the hints didn't know */
    std::uint32_t _surprises = 0;
    /* Whether a member has no hint since another one has the same name */
    bool _hasDuplicates = false;

    /* The current promise, or 0, and what is known under it: how many searches
       were in vain, and whether a name without a hint is certainly absent */
    std::uint64_t _promise = 0;
    std::uint32_t _vainSearches = 0;
    bool _complete = false;
};

}

#endif
