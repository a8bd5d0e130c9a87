#ifndef Orrelin_shared_Implementation_utf8_h
#define Orrelin_shared_Implementation_utf8_h

#include <charconv>
#include <cstdint>
#include <cstring>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Where the first byte is that isn't ASCII */
inline const char* asciiEnd(const char* begin, const char* end) {
    for(; end - begin >= 8; begin += 8) {
        std::uint64_t bytes;
        std::memcpy(&bytes, begin, 8);
        if(bytes & 0x8080808080808080ull)
            break;
    }
    while(begin != end && !(*begin & '\x80'))
        ++begin;
    return begin;
}

/* How many bytes from the begin on are UTF-8 */
inline std::size_t utf8Size(Containers::StringView text) {
    const char* const end = text.end();
    const char* i = text.begin();
    while((i = asciiEnd(i, end)) != end) {
        rapidjson::MemoryStream stream{i, std::size_t(end - i)};
        unsigned codePoint;
        if(!rapidjson::UTF8<>::Decode(stream, &codePoint))
            return std::size_t(i - text.begin());
        i += stream.Tell();
    }
    return text.size();
}

/* What's escaped by \u and four digits at the begin of the range; zero if there
   is no such thing */
inline unsigned escapedUnit(const char* begin, const char* end) {
    unsigned out = 0;
    return end - begin >= 6 && begin[0] == '\\' && begin[1] == 'u' &&
            std::from_chars(begin + 2, begin + 6, out, 16).ptr == begin + 6
        ? out
        : 0;
}

/* Where the next escape sequence is, after what is at the begin of the range */
inline const char* nextEscape(const char* begin, const char* end) {
    /* In \\ud83d, what's escaped is the second backslash */
    begin += *begin == '\\' && end - begin > 1 ? 2 : 1;
    const void* const found = std::memchr(begin, '\\', end - begin);
    return found ? static_cast<const char*>(found) : end;
}

}

#endif
