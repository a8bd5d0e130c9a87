#ifndef Corrade_Utility_AbstractHash_h
#define Corrade_Utility_AbstractHash_h

/** @file
 * @brief Class @ref Corrade::Utility::HashDigest
 */

#include <cstring>

#include "Corrade/Utility/Utility.h"

namespace Corrade { namespace Utility {

/** @brief Result of a hash */
template<std::size_t size> class HashDigest {
public:
    /** @brief Digest of given bytes */
    static HashDigest<size> fromByteArray(const char* digest) {
        HashDigest<size> out;
        std::memcpy(out._digest, digest, size);
        return out;
    }

    /** @brief Zero digest */
    constexpr /*implicit*/ HashDigest(): _digest{} {}

    /** @brief Equality */
    bool operator==(const HashDigest<size>& other) const {
        return std::memcmp(_digest, other._digest, size) == 0;
    }

    /** @brief Inequality */
    bool operator!=(const HashDigest<size>& other) const {
        return !(*this == other);
    }

    /** @brief The bytes, in the machine's order */
    constexpr const char* byteArray() const { return _digest; }

private:
    char _digest[size];
};

}}

#endif
