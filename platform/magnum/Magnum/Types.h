#ifndef Magnum_Types_h
#define Magnum_Types_h

/** @file
 * @brief Scalar types of the @ref Magnum namespace
 */

#include <cstdint>

namespace Magnum {

typedef std::uint32_t UnsignedInt;
typedef std::int32_t Int;
typedef float Float;
typedef double Double;

}

#endif
