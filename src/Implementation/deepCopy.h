#ifndef Orrelin_Implementation_deepCopy
#define Orrelin_Implementation_deepCopy

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* A copy that shares nothing with the value. RapidJSON's own copying shares
   texts that the value only refers to. The value may be nested to any depth. */
JsonValue deepCopy(const JsonValue& value, JsonAllocator& allocator);

/* Makes target a deep copy of the value, which may be a part of it. An array of
   numbers is written over one of the same size: a new one would take memory of
   the pool with each push of a drag, which frees nothing. */
void deepAssign(
    JsonValue& target, const JsonValue& value, JsonAllocator& allocator);

}

#endif
