#include "shared/Implementation/NameHash.h"

#include <cstring>
#include <random>
#include <Corrade/Containers/StringView.h>

namespace OrrelinEngine {

namespace {

__extension__ typedef unsigned __int128 WideInteger;

constexpr std::uint64_t Prime = (std::uint64_t{1} << 61) - 1;
/* A block of so many bytes is always less than the prime */
constexpr std::size_t BlockSize = 7;

/* Modulo the prime, for which 2^61 is 1: so the bits from 61 on are added to
   those below instead of a division. The result may still be a bit more than
   the prime, which does no harm: equal names get equal results. */
std::uint64_t multiply(std::uint64_t a, std::uint64_t b) {
    const WideInteger product = WideInteger{a} * b;
    const std::uint64_t sum =
        (std::uint64_t(product) & Prime) + std::uint64_t(product >> 61);
    return sum >= Prime ? sum - Prime : sum;
}

/* Neither 0, with which all names collide, nor 1, with which the order of the
   blocks doesn't count */
std::uint64_t drawKey() {
    std::random_device random;
    const std::uint64_t high = random();
    return ((high << 32) | random()) % (Prime - 2) + 2;
}

}

std::uint64_t nameHash(Containers::StringView name) {
    static const std::uint64_t key = drawKey();
    const char* at = name.data();
    std::size_t left = name.size();
    /* Begins with the length, as the last block is filled up with zeros */
    std::uint64_t hash = left;
    for(; left >= BlockSize; left -= BlockSize, at += BlockSize) {
        std::uint64_t block = 0;
        std::memcpy(&block, at, BlockSize);
        hash = multiply(hash + block, key);
    }
    std::uint64_t block = 0;
    for(; left; --left)
        block = block << 8 | static_cast<unsigned char>(*at++);
    return multiply(hash + block, key);
}

}
