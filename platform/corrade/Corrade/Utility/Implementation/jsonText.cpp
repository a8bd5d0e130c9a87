#include "Corrade/Utility/Implementation/jsonText.h"

#include <cstdint>
#include <cstring>

namespace Corrade { namespace Utility { namespace Implementation {

namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
    "the first byte has to be the lowest one of a word");

constexpr std::uint64_t Ones = 0x0101010101010101ull;
constexpr std::uint64_t TopBits = 0x8080808080808080ull;

/* Top bits of bytes that are less than given value, which is at most 0x80.
   Bytes after such a one may be false positives. */
constexpr std::uint64_t bytesLessThan(
    const std::uint64_t bytes, const std::uint64_t value) {
    return (bytes - value * Ones) & ~bytes & TopBits;
}

/* Top bits of bytes that aren't plain ASCII text, exact for the first one */
std::uint64_t specialBytes(const char* const data) {
    std::uint64_t bytes;
    std::memcpy(&bytes, data, 8);
    return (bytes & TopBits) | bytesLessThan(bytes, ' ') |
        bytesLessThan(bytes ^ '"' * Ones, 1) |
        bytesLessThan(bytes ^ '\\' * Ones, 1);
}

constexpr bool isPlain(const char c) {
    return static_cast<unsigned char>(c) >= ' ' &&
        static_cast<unsigned char>(c) < 0x80 && c != '"' && c != '\\';
}

const char* skipPlainText(const char* begin, const char* const end) {
    for(; end - begin >= 8; begin += 8)
        if(const std::uint64_t special = specialBytes(begin))
            return begin + __builtin_ctzll(special) / 8;
    while(begin != end && isPlain(*begin))
        ++begin;
    return begin;
}

}

const char* skipJsonText(const char* begin, const char* const end) {
    for(;;) {
        begin = skipPlainText(begin, end);
        if(begin == end || static_cast<unsigned char>(*begin) < 0x80)
            return begin;

        do {
            const Utf8Sequence sequence = utf8Sequence(begin, end);
            if(!sequence.valid)
                return begin;
            begin += sequence.size;
        } while(begin != end && static_cast<unsigned char>(*begin) >= 0x80);
    }
}

Utf8Sequence utf8Sequence(const char* const begin, const char* const end) {
    const auto lead = static_cast<unsigned char>(*begin);
    if(lead < 0x80)
        return {1, true};

    const std::size_t size = lead >= 0xc2 && lead <= 0xdf ? 2
        : lead >= 0xe0 && lead <= 0xef                    ? 3
        : lead >= 0xf0 && lead <= 0xf4                    ? 4
                                                          : 1;
    if(size == 1)
        return {1, false};

    /* The second byte decides about overlong forms, surrogates and values
       above the last code point */
    unsigned char lowest = lead == 0xe0 ? 0xa0 : lead == 0xf0 ? 0x90 : 0x80;
    unsigned char highest = lead == 0xed ? 0x9f : lead == 0xf4 ? 0x8f : 0xbf;
    for(std::size_t i = 1; i != size; ++i) {
        if(begin + i == end)
            return {i, false};
        const auto byte = static_cast<unsigned char>(begin[i]);
        if(byte < lowest || byte > highest)
            return {i, false};
        lowest = 0x80;
        highest = 0xbf;
    }
    return {size, true};
}

}}}
