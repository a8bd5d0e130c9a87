#ifndef Orrelin_Tools_Implementation_StoredMembers
#define Orrelin_Tools_Implementation_StoredMembers

#include "shared/Implementation/ObjectIndex.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* The first member of that name. Null if the object doesn't have it, isn't an
   object or is a null pointer. Linear in the number of members. */
const JsonValue* storedMember(
    const JsonValue* object, Containers::StringView name);

/* The same for many members of one object. A large one is indexed, so the cost
   of a look-up doesn't grow with it. While this exists, values may change, but
   no member may be added or removed. */
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
