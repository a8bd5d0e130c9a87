#ifndef Orrelin_shared_Implementation_NameHash
#define Orrelin_shared_Implementation_NameHash

#include <cstdint>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Hash of a name that comes from a file of a stranger: with a key that is drawn
   anew in each process, so that nobody can choose names which collide. The
   names' blocks are the coefficients of a polynomial that is evaluated at the
   key, modulo a prime. Two different names agree for as many keys as that has
   roots, a few out of 2^61. */
std::uint64_t nameHash(Containers::StringView name);

}

#endif
