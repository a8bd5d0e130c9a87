#ifndef Magnum_Types_h
#define Magnum_Types_h

/** @file
 * @brief Scalar types of the @ref Magnum namespace
 */

#include <cstdint>

namespace Magnum {

typedef std::uint8_t UnsignedByte;
typedef std::int8_t Byte;
typedef std::uint16_t UnsignedShort;
typedef std::int16_t Short;
typedef std::uint32_t UnsignedInt;
typedef std::int32_t Int;
typedef std::uint64_t UnsignedLong;
typedef std::int64_t Long;
typedef float Float;
typedef double Double;

}

#endif
