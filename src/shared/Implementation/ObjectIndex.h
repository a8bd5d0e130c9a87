#ifndef Orrelin_shared_Implementation_ObjectIndex
#define Orrelin_shared_Implementation_ObjectIndex

#include <cstdint>
#include <vector>
#include <rapidjson/document.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Position of the member, or the number of members if it's absent. Looks at
   one after the other. */
std::uint32_t searchMember(
    const JsonValue& object, Containers::StringView name);

/* Where the members of one large object stand, by name. Only hints: the object
   may have been edited in any way since, so what they say is checked against
   it, and what they don't know is searched for. */
class ObjectIndex {
public:
    /* Position of the member, or the number of members if it's absent. The
       promise is a number that stays the same for as long as nobody but this
       index edits the object, 0 where anybody may have since the last call.
       Only under a promise is it remembered that a name is absent. */
    std::uint32_t find(const JsonValue& object, Containers::StringView name,
        std::uint64_t promise);

    /* A member whose name isn't one of the others was appended */
    void appended(const JsonValue& object);

    /* Erases the member at given position, what follows moves up */
    void erase(JsonValue& object, std::uint32_t position);

    /* How many members it has hints for, about */
    std::size_t size() const { return _count; }

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

    std::vector<Slot> _slots;
    std::size_t _used = 0;
    /* How many members, from the first on, the object had when the hints were
       last in step with it */
    std::uint32_t _count = 0;
    /* Searches before there were hints, and those that found a member which
       the hints didn't know */
    std::uint32_t _searches = 0;
    std::uint32_t _surprises = 0;
    bool _hasDuplicates = false;

    /* Under this promise: searches in vain, and whether all names are known */
    std::uint64_t _promise = 0;
    std::uint32_t _vainSearches = 0;
    bool _complete = false;
};

}

#endif
