#ifndef Corrade_Utility_Implementation_jsonText_h
#define Corrade_Utility_Implementation_jsonText_h

#include <cstddef>

namespace Corrade { namespace Utility { namespace Implementation {

/* First byte that can't be a part of a JSON string literal just like that -- a
   quote, a backslash, a control character or what's not valid UTF-8 */
const char* skipJsonText(const char* begin, const char* end);

/* UTF-8 sequence at the begin of a non-empty range. If not valid, the size is
   how much of it is a begin of a valid one, at least one byte. */
struct Utf8Sequence {
    std::size_t size;
    bool valid;
};

Utf8Sequence utf8Sequence(const char* begin, const char* end);

}}}

#endif
