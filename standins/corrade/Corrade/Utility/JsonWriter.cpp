#include "Corrade/Utility/JsonWriter.h"

#include <cstdio>

namespace Corrade { namespace Utility {

namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
    "the first byte has to be the lowest one of a word");

constexpr std::uint64_t Ones = 0x0101010101010101ull;
constexpr std::uint64_t TopBits = 0x8080808080808080ull;

/* Sets the top bit of each byte that is less than the value. The subtraction
   borrows from the bytes behind such a byte, whose bits may be wrong: only the
   first one counts. */
constexpr std::uint64_t lessThan(std::uint64_t bytes, std::uint64_t value) {
    return (bytes - value * Ones) & ~bytes & TopBits;
}

bool isEscaped(const char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\';
}

/* The first character to escape. Eight bytes at once, as there's seldom one. */
const char* findEscaped(const char* begin, const char* const end) {
    for(; end - begin >= 8; begin += 8) {
        std::uint64_t bytes;
        std::memcpy(&bytes, begin, 8);
        const std::uint64_t found = lessThan(bytes, ' ') |
            lessThan(bytes ^ '"' * Ones, 1) | lessThan(bytes ^ '\\' * Ones, 1);
        if(found)
            return begin + __builtin_ctzll(found) / 8;
    }
    while(begin != end && !isEscaped(*begin))
        ++begin;
    return begin;
}

}

JsonWriter::JsonWriter(const Options options, const std::uint32_t indentation,
    const std::uint32_t initialIndentation):
    _indentation{indentation} {
    CORRADE_INTERNAL_ASSERT(
        options >= (Option::Wrap | Option::TypographicalSpace) &&
        !initialIndentation);
}

void JsonWriter::newline() {
    _out += '\n';
    _out.append(_level * _indentation, ' ');
}

void JsonWriter::quoted(const Containers::StringView string) {
    using namespace Containers::Literals;
    constexpr Containers::StringView characters = "\"\\\b\f\n\r\t"_s;
    constexpr Containers::StringView escapes = "\"\\bfnrt"_s;

    _out += '"';
    const char* i = string.begin();
    for(;;) {
        const char* const found = findEscaped(i, string.end());
        _out.append(i, found - i);
        if(found == string.end())
            break;
        i = found + 1;

        _out += '\\';
        const char* const escaped = characters.findOr(*found, nullptr).data();
        if(escaped)
            _out += escapes[escaped - characters.data()];
        else {
            char code[6];
            std::snprintf(code, sizeof(code), "u%04x", unsigned(*found));
            _out += code;
        }
    }
    _out += '"';
}

JsonWriter& JsonWriter::beginObject() {
    _out += '{';
    ++_level;
    _isEmpty = true;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    --_level;
    if(!_isEmpty)
        newline();
    _out += '}';
    if(!_level)
        newline();
    _isEmpty = false;
    return *this;
}

JsonWriter& JsonWriter::writeKey(const Containers::StringView key) {
    if(!_isEmpty)
        _out += ',';
    newline();
    quoted(key);
    _out += ": ";
    _isEmpty = false;
    return *this;
}

JsonWriter& JsonWriter::write(std::nullptr_t) {
    _out += "null";
    return *this;
}

JsonWriter& JsonWriter::write(const Containers::StringView value) {
    quoted(value);
    return *this;
}

}}
