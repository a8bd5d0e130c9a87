#include "Corrade/Utility/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/StringStl.h"
#include "Corrade/Utility/Path.h"
#include "Corrade/Utility/Implementation/floatText.h"
#include "Corrade/Utility/Implementation/jsonText.h"

namespace Corrade { namespace Utility {

using namespace Containers::Literals;

namespace {

enum class Expecting { Value, ObjectKey, ObjectValue, ArrayValue, Nothing };

Debug& operator<<(Debug& debug, const Expecting value) {
    switch(value) {
    case Expecting::Value:
        return debug << "a value";
    case Expecting::ObjectKey:
        return debug << "an object key or object end";
    case Expecting::ObjectValue:
        return debug << "an object value";
    case Expecting::ArrayValue:
        return debug << "an array value or array end";
    case Expecting::Nothing:
        return debug << "document end";
    }
    CORRADE_INTERNAL_ASSERT_UNREACHABLE();
}

bool isValueExpected(const Expecting expecting) {
    return expecting != Expecting::ObjectKey && expecting != Expecting::Nothing;
}

Containers::StringView escaped(const char c, char (&unicode)[6]) {
    switch(c) {
    case '"':
        return "\\\""_s;
    case '\\':
        return "\\\\"_s;
    case '\b':
        return "\\b"_s;
    case '\t':
        return "\\t"_s;
    case '\n':
        return "\\n"_s;
    case '\f':
        return "\\f"_s;
    case '\r':
        return "\\r"_s;
    }

    constexpr const char* digits = "0123456789abcdef";
    unicode[4] = digits[c >> 4];
    unicode[5] = digits[c & 0xf];
    return {unicode, 6};
}

}

struct JsonWriter::State {
    bool wrap;
    std::uint32_t indentation, initialIndentation;
    Containers::StringView comma, afterKey;

    /* The output, up to the size */
    Containers::Array<char> out;
    std::size_t size = 0;
    /* A comma, and if wrapping, a newline with spaces for the deepest level so
       far */
    std::string separator;
    /* Whether each of the open levels is an object */
    std::vector<bool> levels;
    Expecting expecting = Expecting::Value;
    bool needsComma = false;

    void append(Containers::StringView string) {
        if(out.size() - size < string.size())
            arrayResize(out, NoInit, size + string.size() + size / 2 + 256);
        if(string)
            std::memcpy(out.data() + size, string.data(), string.size());
        size += string.size();
    }

    void appendSeparator(bool withComma) {
        const std::size_t spaces =
            initialIndentation + indentation * levels.size();
        const std::size_t needed = comma.size() + (wrap ? 1 + spaces : 0);
        if(separator.size() < needed)
            separator.resize(needed, ' ');
        append(Containers::StringView{separator.data(), needed}.exceptPrefix(
            withComma ? 0 : comma.size()));
    }

    void appendQuoted(
        Containers::StringView string, Containers::StringView after);

    void beforeItem() {
        if(!levels.empty() && expecting != Expecting::ObjectValue)
            appendSeparator(needsComma);
    }

    void afterValue() {
        needsComma = true;
        if(!levels.empty())
            expecting =
                levels.back() ? Expecting::ObjectKey : Expecting::ArrayValue;
        else {
            /* Indented output is meant to be put into another. The null
               terminator isn't a part of the output. */
            append(wrap && !initialIndentation ? "\n\0"_s : "\0"_s);
            expecting = Expecting::Nothing;
        }
    }
};

void JsonWriter::State::appendQuoted(
    const Containers::StringView string, const Containers::StringView after) {
    append("\""_s);
    for(const char* i = string.begin();;) {
        /* What needs no change is appended at once */
        const char* const changed =
            Implementation::skipJsonText(i, string.end());
        append({i, std::size_t(changed - i)});
        if(changed == string.end())
            break;

        char unicode[6]{'\\', 'u', '0', '0'};
        const Implementation::Utf8Sequence sequence =
            Implementation::utf8Sequence(changed, string.end());
        append(sequence.valid ? escaped(*changed, unicode) : "\xef\xbf\xbd"_s);
        i = changed + sequence.size;
    }
    append(after);
}

JsonWriter::JsonWriter(const Options options, const std::uint32_t indentation,
    const std::uint32_t initialIndentation):
    _state{InPlaceInit} {
    CORRADE_ASSERT(indentation <= 8,
        "Utility::JsonWriter: can indent by 8 spaces at most, not"
            << indentation, );

    _state->wrap = options >= Option::Wrap;
    _state->indentation = indentation;
    _state->initialIndentation = initialIndentation;
    _state->comma =
        options >= Option::TypographicalSpace && !_state->wrap ? ", "_s : ","_s;
    _state->afterKey =
        options >= Option::TypographicalSpace ? "\": "_s : "\":"_s;
    _state->separator = _state->comma;
    if(_state->wrap)
        _state->separator += '\n';
}

JsonWriter::JsonWriter(JsonWriter&&) noexcept = default;

JsonWriter::~JsonWriter() = default;

JsonWriter& JsonWriter::operator=(JsonWriter&&) noexcept = default;

bool JsonWriter::isEmpty() const {
    return !_state->size;
}

std::size_t JsonWriter::size() const {
    return _state->size - (_state->expecting == Expecting::Nothing ? 1 : 0);
}

JsonWriter& JsonWriter::begin(const char brace, const char* const function) {
    CORRADE_ASSERT(isValueExpected(_state->expecting),
        "Utility::JsonWriter::" << Debug::nospace << function << Debug::nospace
                                << "(): expected" << _state->expecting,
        *this);

    const bool object = brace == '{';
    _state->beforeItem();
    _state->append({&brace, 1});
    _state->levels.push_back(object);
    _state->expecting = object ? Expecting::ObjectKey : Expecting::ArrayValue;
    _state->needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::end(const char brace, const char* const function) {
    CORRADE_ASSERT(_state->expecting ==
            (brace == '}' ? Expecting::ObjectKey : Expecting::ArrayValue),
        "Utility::JsonWriter::" << Debug::nospace << function << Debug::nospace
                                << "(): expected" << _state->expecting,
        *this);

    _state->levels.pop_back();
    if(_state->needsComma)
        _state->appendSeparator(false);
    _state->append({&brace, 1});
    _state->afterValue();
    return *this;
}

JsonWriter& JsonWriter::beginObject() {
    return begin('{', "beginObject");
}
JsonWriter& JsonWriter::endObject() {
    return end('}', "endObject");
}
JsonWriter& JsonWriter::beginArray() {
    return begin('[', "beginArray");
}
JsonWriter& JsonWriter::endArray() {
    return end(']', "endArray");
}

JsonWriter& JsonWriter::writeKey(const Containers::StringView key) {
    CORRADE_ASSERT(_state->expecting == Expecting::ObjectKey,
        "Utility::JsonWriter::writeKey(): expected" << _state->expecting,
        *this);

    _state->beforeItem();
    _state->appendQuoted(key, _state->afterKey);
    _state->expecting = Expecting::ObjectValue;
    return *this;
}

JsonWriter& JsonWriter::writeLiteral(const Containers::StringView literal) {
    CORRADE_ASSERT(isValueExpected(_state->expecting),
        "Utility::JsonWriter::write(): expected" << _state->expecting, *this);

    _state->beforeItem();
    _state->append(literal);
    _state->afterValue();
    return *this;
}

JsonWriter& JsonWriter::write(const Containers::StringView value) {
    CORRADE_ASSERT(isValueExpected(_state->expecting),
        "Utility::JsonWriter::write(): expected" << _state->expecting, *this);

    _state->beforeItem();
    _state->appendQuoted(value, "\""_s);
    _state->afterValue();
    return *this;
}

JsonWriter& JsonWriter::write(std::nullptr_t) {
    return writeLiteral("null"_s);
}

JsonWriter& JsonWriter::writeBool(const bool value) {
    return writeLiteral(value ? "true"_s : "false"_s);
}

JsonWriter& JsonWriter::write(const float value) {
    CORRADE_ASSERT(std::isfinite(value),
        "Utility::JsonWriter::write(): JSON has no way to write" << value,
        *this);
    return writeLiteral(Implementation::FloatText{value}.view());
}

JsonWriter& JsonWriter::write(const double value) {
    CORRADE_ASSERT(std::isfinite(value),
        "Utility::JsonWriter::write(): JSON has no way to write" << value,
        *this);
    return writeLiteral(Implementation::FloatText{value}.view());
}

JsonWriter& JsonWriter::write(const long long value) {
    CORRADE_ASSERT(value >= -(1ll << 52) && value < 1ll << 52,
        "Utility::JsonWriter::write(): integer not within 52 bits:" << value,
        *this);

    char text[24];
    return writeLiteral({text,
        std::size_t(
            std::to_chars(text, text + sizeof(text), value).ptr - text)});
}

JsonWriter& JsonWriter::write(const unsigned long long value) {
    CORRADE_ASSERT(value < 1ull << 52,
        "Utility::JsonWriter::write(): integer not within 52 bits:" << value,
        *this);
    return write(static_cast<long long>(value));
}

Containers::StringView JsonWriter::toString() const {
    CORRADE_ASSERT(_state->expecting == Expecting::Nothing,
        "Utility::JsonWriter::toString(): not complete yet, expected"
            << _state->expecting,
        {});
    return {
        _state->out.data(), size(), Containers::StringViewFlag::NullTerminated};
}

bool JsonWriter::toFile(const Containers::StringView filename) const {
    return Path::write(filename, toString());
}

}}
