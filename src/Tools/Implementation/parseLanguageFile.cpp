#include "Tools/Implementation/parseLanguageFile.h"

#include <cstring>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Json.h>

#include "shared/Implementation/utf8.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

void writePair(char* out, unsigned high, unsigned low) {
    const unsigned codePoint =
        0x10000 + ((high - 0xd800) << 10) + (low - 0xdc00);
    out[0] = char(0xf0 | (codePoint >> 18));
    for(int i = 1; i != 4; ++i)
        out[i] = char(0x80 | ((codePoint >> (18 - 6 * i)) & 0x3f));
}

/* Corrade's parser decodes each half of a surrogate pair on its own: \ud83d and
   \ude00 together become six bytes that aren't UTF-8, instead of the four of a
   smiley. So the two escape sequences are replaced by those four bytes before
   parsing. That needs no memory, as twelve bytes become four and the rest moves
   to the front.

   Doesn't look for the begin and end of strings: JSON has backslashes nowhere
   else, so the parser refuses the file anyway. Returns the new end, or null if
   a half is alone, as UTF-8 has no such character. */
char* joinSurrogates(char* begin, char* end) {
    char* out = begin;
    for(const char* in = begin; in != end;) {
        const unsigned high = escapedUnit(in, end);
        if(high >= 0xd800 && high <= 0xdfff) {
            const unsigned low = escapedUnit(in + 6, end);
            if(high > 0xdbff || low < 0xdc00 || low > 0xdfff)
                return nullptr;
            writePair(out, high, low);
            out += 4;
            in += 12;
            continue;
        }
        const char* const next = nextEscape(in, end);
        if(out != in)
            std::memmove(out, in, next - in);
        out += next - in;
        in = next;
    }
    return out;
}

}

Containers::Optional<Utility::Json> parseLanguageFile(
    Containers::ArrayView<char> content) {
    /* Corrade's parser accepts any bytes as text, and an export would write
       them */
    const Containers::StringView text{content.data(), content.size()};
    if(utf8Size(text) != text.size())
        return {};
    const char* const end = joinSurrogates(content.begin(), content.end());
    if(!end)
        return {};
    /* The parser doesn't know the file's name. The caller prints one line that
       has it. */
    Utility::Error silence{nullptr};
    return Utility::Json::fromString(
        {content.data(), std::size_t(end - content.data())},
        Utility::Json::Option::ParseLiterals |
            Utility::Json::Option::ParseStrings);
}

Utility::JsonIterator translationOf(const Utility::Json& file) {
    typedef Utility::JsonToken::Type Type;
    const Utility::JsonToken root = file.root();
    const Utility::JsonIterator out = root.type() == Type::Object
        ? root.find("translation")
        : Utility::JsonIterator{};
    return out && out->type() == Type::Object ? out : Utility::JsonIterator{};
}

}}
