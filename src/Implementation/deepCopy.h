#ifndef Orrelin_Implementation_deepCopy
#define Orrelin_Implementation_deepCopy

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* A copy that shares nothing with the value, not even the texts that it only
   refers to and that RapidJSON's own copying would share. Of any depth. */
JsonValue deepCopy(const JsonValue& value, JsonAllocator& allocator);

/* Makes target a deep copy of the value. Numbers in an array of the same size
   are assigned in place, since the pool would keep the old array forever. */
void deepAssign(
    JsonValue& target, const JsonValue& value, JsonAllocator& allocator);

}

#endif
