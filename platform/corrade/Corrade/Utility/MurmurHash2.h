#ifndef Corrade_Utility_MurmurHash2_h
#define Corrade_Utility_MurmurHash2_h

/** @file
 * @brief Class @ref Corrade::Utility::MurmurHash2
 */

#include <cstdint>

#include "Corrade/Utility/AbstractHash.h"

namespace Corrade { namespace Utility {

/** @brief 64-bit MurmurHash 2 */
class MurmurHash2 {
public:
    /** @brief Digest type */
    typedef HashDigest<8> Digest;

    /** @brief Constructor */
    constexpr explicit MurmurHash2(std::size_t seed = 0): _seed{seed} {}

    /** @brief Digest of given bytes */
    Digest operator()(const char* data, std::size_t size) const;

private:
    std::uint64_t _seed;
};

}}

#endif
