#ifndef Orrelin_Tools_Implementation_StoredMembers
#define Orrelin_Tools_Implementation_StoredMembers

#include "shared/Implementation/ObjectIndex.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* The first member of that name. Null if there is none, or no object, null
   included. Searches the object. */
const JsonValue* storedMember(
    const JsonValue* object, Containers::StringView name);

/* The same for many members of one object, at a cost that doesn't grow with
   it. Meanwhile values may change, but no member may be added or removed. */
class StoredMembers {
public:
    explicit StoredMembers(const JsonValue* object): _object{object} {}

    const JsonValue* find(Containers::StringView name);

private:
    const JsonValue* _object;
    ObjectIndex _index;
};

}}

#endif
