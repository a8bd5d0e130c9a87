#ifndef Orrelin_OrrelinEditorData_ObjectIndex_h
#define Orrelin_OrrelinEditorData_ObjectIndex_h

#include <cstdint>
#include <vector>
#include <rapidjson/document.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Position of the member, or the number of members if it's absent. Looks at
   one after the other. */
std::uint32_t searchMember(
    const JsonValue& object, Containers::StringView name);

/* Where the members of one large object stand, by name. Only hints: the
   object may have been edited since, so every answer is checked against it. */
class ObjectIndex {
public:
    /* Position of the member, or the number of members if it's absent. That
       a name it doesn't know is absent it believes only if it made sure in
       the same epoch that it knows all names and the last of them is still
       where it was; otherwise it searches the object. Epoch 0 never lasts
       from one call to the next. */
    std::uint32_t find(const JsonValue& object, Containers::StringView name,
        std::uint64_t epoch);

    /* A member was appended to the object, all else is as it was */
    void appended(const JsonValue& object);

    /* Erases the member at given position, what follows moves up */
    void erase(JsonValue& object, std::uint32_t position);

    /* How many members it indexes */
    std::size_t size() const { return _count; }

    bool usedSinceSweep = true;

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t position; /* Free if ~0 */
    };

    void rebuild(const JsonValue& object);
    void extend(const JsonValue& object);
    void insert(std::uint32_t hash, std::uint32_t position);
    void growTable(std::size_t memberCount);
    void rememberLast(const JsonValue& object);
    bool lastStands(const JsonValue& object) const;
    void checkComplete(const JsonValue& object);
    std::uint32_t findHinted(const JsonValue& object,
        Containers::StringView name, std::uint32_t hash) const;
    std::size_t slotOf(std::uint32_t hash, std::uint32_t position) const;
    void freeSlot(std::size_t slot);

    std::vector<Slot> _slots;
    std::size_t _used = 0;
    /* How many members of the object, from its first on, were indexed */
    std::uint32_t _count = 0;
    /* Members that a search found though the hints didn't */
    std::uint32_t _surprises = 0;
    /* Searches in vain in an epoch, and whether it knows all names in it */
    std::uint64_t _epoch = 0;
    std::uint32_t _vainSearches = 0;
    bool _complete = false;
    /* Name of the last member that was indexed */
    const char* _lastName = nullptr;
    std::uint32_t _lastHash = 0;
};

}

#endif
