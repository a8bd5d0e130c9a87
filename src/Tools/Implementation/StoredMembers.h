#ifndef Orrelin_Tools_Implementation_StoredMembers
#define Orrelin_Tools_Implementation_StoredMembers

#include <cstdint>
#include <vector>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Empty if the value is no string */
Containers::StringView stringOf(const JsonValue& value);

/* Finds members of an object by their names, of those that share one the
   first. Searches the object a few times and then sorts its names, so many
   look-ups cost hardly more than a few, whatever a stranger called the members.
   Meanwhile values may change, but no member may be added or removed. */
class StoredMembers {
public:
    /* Searching so many is never worth a table */
    static constexpr std::uint32_t Few = 32;

    /* Nothing is found in what is no object, null included */
    explicit StoredMembers(const JsonValue* object): _object{object} {}

    const JsonValue* find(Containers::StringView name);

private:
    struct Member {
        Containers::StringView name;
        const JsonValue* value;
    };

    void sort();

    const JsonValue* _object;
    std::uint32_t _searches = 0;
    std::vector<Member> _sorted;
};

}}

#endif
