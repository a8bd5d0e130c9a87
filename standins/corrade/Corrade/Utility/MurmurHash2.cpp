#include "Corrade/Utility/MurmurHash2.h"

#include <cstring>

namespace Corrade { namespace Utility {

namespace {

constexpr std::uint64_t Multiplier = 0xc6a4a7935bd1e995ull;
constexpr int Shift = 47;

std::uint64_t mixed(const std::uint64_t value) {
    return value ^ (value >> Shift);
}

std::uint64_t load(const char* const data, const std::size_t size) {
    std::uint64_t out{};
    std::memcpy(&out, data, size);
    return out;
}

}

MurmurHash2::Digest MurmurHash2::operator()(
    const char* const data, const std::size_t size) const {
    std::uint64_t hash = size * Multiplier;

    const std::size_t whole = size / 8 * 8;
    for(std::size_t i = 0; i != whole; i += 8)
        hash = (hash ^ (mixed(load(data + i, 8) * Multiplier) * Multiplier)) *
            Multiplier;
    if(whole != size)
        hash = (hash ^ load(data + whole, size - whole)) * Multiplier;

    return Digest{mixed(mixed(hash) * Multiplier)};
}

}}
