#ifndef Orrelin_Tracking_Implementation_hashes_h
#define Orrelin_Tracking_Implementation_hashes_h

#include <cstdint>

#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Tracking {

/* Records store hashes with six characters of six bits, or with the first four
   of them where they are only compared with one or two others */
constexpr int HashBits = 36;
constexpr int ShortHashBits = 24;

static_assert(sizeof(std::size_t) == 8,
    "Records have to be the same on all machines, so hashes need 64 bits");

inline std::uint64_t textHash(Containers::StringView text) {
    return StrHash{}(text) >> (64 - HashBits);
}

/* Never 0, which stands for no text */
inline std::uint32_t shortHash(std::uint64_t hash) {
    const std::uint32_t out = std::uint32_t(hash >> (HashBits - ShortHashBits));
    return out ? out : 1;
}

inline std::uint32_t shortTextHash(Containers::StringView text) {
    return shortHash(textHash(text));
}

/* Bits of a translation's hash that are of its key. The others are of the text,
   by which it's found under whatever key. */
constexpr std::uint64_t KeyMask = 0xfff;

inline std::uint64_t translationHash(
    Containers::StringView key, Containers::StringView text) {
    return (textHash(text) & ~KeyMask) | textHash(key) >> (HashBits - 12);
}

}}

#endif
