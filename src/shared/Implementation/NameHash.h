#ifndef Orrelin_shared_Implementation_NameHash
#define Orrelin_shared_Implementation_NameHash

#include <cstdint>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Hash of a name, which may come from a stranger's file. The key is drawn anew
   in each process, so nobody can choose names that collide. Linear in the
   length; not the same in another process.

   The blocks of the name are the coefficients of a polynomial that is evaluated
   at the key, modulo a prime. Two names with different polynomials collide only
   for the keys that are roots of the difference: of 2^61 keys, no more than the
   longer name has blocks. Names can have the same polynomial only if the last
   block of one begins with zero bytes, and no more than seven at a time. */
std::uint64_t nameHash(Containers::StringView name);

}

#endif
