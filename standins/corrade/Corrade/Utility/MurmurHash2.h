#ifndef Corrade_Utility_MurmurHash2_h
#define Corrade_Utility_MurmurHash2_h

/** @file
 * @brief Class @ref Corrade::Utility::MurmurHash2
 */

#include <cstddef>
#include <cstdint>

namespace Corrade { namespace Utility {

/** @brief 64-bit MurmurHash 2, with a seed of zero */
class MurmurHash2 {
public:
    /** @brief The hash */
    class Digest {
    public:
        /** @brief The bytes, in the machine's order */
        const char* byteArray() const {
            return reinterpret_cast<const char*>(&_hash);
        }

    private:
        friend MurmurHash2;

        explicit Digest(std::uint64_t hash): _hash{hash} {}

        std::uint64_t _hash;
    };

    /** @brief Digest of given bytes */
    Digest operator()(const char* data, std::size_t size) const;
};

}}

#endif
