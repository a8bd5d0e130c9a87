#include "Corrade/Utility/Json.h"

#include <charconv>
#include <cstring>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"

namespace Corrade { namespace Utility {

using namespace Containers::Literals;

namespace Implementation {

struct JsonTokenData {
    /* Text of strings, decoded */
    const char* text;

    /* Size of a string or, for a container, the number of all tokens inside.
       While a container is still open, this is the index of its parent. */
    std::size_t size;

    JsonToken::Type type;
};

}

namespace {

using Implementation::JsonTokenData;

constexpr std::size_t NoParent = ~std::size_t{};

/* Each function looks for the thing that it's named after, moves past it and
   returns whether it was there */
class Tokenizer {
public:
    /* The array ends with a null byte that isn't a part of the text */
    explicit Tokenizer(Containers::Array<char>& text,
        Containers::Array<JsonTokenData>& tokens):
        _begin{text.begin()},
        _end{text.end() - 1}, _at{_begin}, _tokens(tokens) {
        /* Enough for usual texts, so there's no need to grow */
        arrayReserve(_tokens, text.size() / 32 + 1);
    }

    bool run();
    std::size_t offset() const { return _at - _begin; }

private:
    void skipWhitespace();
    bool consume(char c);
    bool value();
    bool afterValue();
    bool key();
    bool literal(Containers::StringView literal, JsonToken::Type type);
    bool number();
    bool string();
    bool escape(char*& out);

    void add(JsonToken::Type type, const char* text, std::size_t size) {
        arrayAppend(_tokens, JsonTokenData{text, size, type});
    }
    void beginContainer(JsonToken::Type type);
    void endContainer();
    bool isInObject() const {
        return _tokens[_parent].type == JsonToken::Type::Object;
    }

    char* const _begin;
    char* const _end;
    char* _at;
    Containers::Array<JsonTokenData>& _tokens;
    std::size_t _parent = NoParent;
};

bool Tokenizer::run() {
    do
        if(!value())
            return false;
    while(_parent != NoParent);
    skipWhitespace();
    return _at == _end;
}

void Tokenizer::skipWhitespace() {
    while(_at != _end &&
        (*_at == ' ' || *_at == '\n' || *_at == '\t' || *_at == '\r'))
        ++_at;
}

bool Tokenizer::consume(const char c) {
    skipWhitespace();
    if(_at == _end || *_at != c)
        return false;
    ++_at;
    return true;
}

void Tokenizer::beginContainer(const JsonToken::Type type) {
    add(type, nullptr, _parent);
    _parent = _tokens.size() - 1;
}

void Tokenizer::endContainer() {
    JsonTokenData& token = _tokens[_parent];
    _parent = token.size;
    token.size = _tokens.end() - &token - 1;
}

/* A value with all that follows it, up to the next value or the end */
bool Tokenizer::value() {
    if(consume('{')) {
        beginContainer(JsonToken::Type::Object);
        if(!consume('}'))
            return key();
        endContainer();
    } else if(consume('[')) {
        beginContainer(JsonToken::Type::Array);
        if(!consume(']'))
            return true;
        endContainer();
    } else if(!string() && !literal("null"_s, JsonToken::Type::Null) &&
        !literal("true"_s, JsonToken::Type::Bool) &&
        !literal("false"_s, JsonToken::Type::Bool) && !number())
        return false;
    return afterValue();
}

bool Tokenizer::afterValue() {
    while(_parent != NoParent) {
        if(consume(','))
            return !isInObject() || key();
        if(!consume(isInObject() ? '}' : ']'))
            return false;
        endContainer();
    }
    return true;
}

bool Tokenizer::key() {
    skipWhitespace();
    return string() && consume(':');
}

bool Tokenizer::literal(
    const Containers::StringView literal, const JsonToken::Type type) {
    if(!Containers::StringView{_at, std::size_t(_end - _at)}.hasPrefix(literal))
        return false;
    _at += literal.size();
    add(type, nullptr, 0);
    return true;
}

bool Tokenizer::number() {
    if(_at == _end || (*_at != '-' && (*_at < '0' || *_at > '9')))
        return false;
    /* Whether it's a valid number is checked only when it's converted */
    while(_at != _end && !"\t\r\n ,]}"_s.contains(*_at))
        ++_at;
    add(JsonToken::Type::Number, nullptr, 0);
    return true;
}

/* Decodes in place, as decoding makes no escape sequence longer. Refuses
   control characters and thus also the null byte at the end of the text. */
bool Tokenizer::string() {
    if(_at == _end || *_at != '"')
        return false;
    const char* const begin = ++_at;
    char* out = _at;
    while(*_at != '"') {
        if(static_cast<unsigned char>(*_at) < ' ')
            return false;
        if(*_at != '\\')
            *out++ = *_at++;
        else if(!escape(out))
            return false;
    }
    ++_at;
    add(JsonToken::Type::String, begin, out - begin);
    return true;
}

bool Tokenizer::escape(char*& out) {
    constexpr Containers::StringView escapes = "\"\\/bfnrt"_s;
    constexpr Containers::StringView characters = "\"\\/\b\f\n\r\t"_s;
    if(const char* const found = escapes.findOr(_at[1], nullptr).data()) {
        *out++ = characters[found - escapes.data()];
        _at += 2;
        return true;
    }

    unsigned code = 0;
    if(_at[1] != 'u' || _end - _at < 6 ||
        std::from_chars(_at + 2, _at + 6, code, 16).ptr != _at + 6)
        return false;
    _at += 6;

    /* The halves of a surrogate pair stay apart */
    if(code < 0x80)
        *out++ = char(code);
    else {
        if(code < 0x800)
            *out++ = char(0xc0 | (code >> 6));
        else {
            *out++ = char(0xe0 | (code >> 12));
            *out++ = char(0x80 | ((code >> 6) & 0x3f));
        }
        *out++ = char(0x80 | (code & 0x3f));
    }
    return true;
}

}

Containers::Optional<Json> Json::fromString(
    const Containers::StringView string, const Options options) {
    CORRADE_INTERNAL_ASSERT(
        options >= (Option::ParseLiterals | Option::ParseStrings));

    Containers::Array<char> text{NoInit, string.size() + 1};
    if(string)
        std::memcpy(text.data(), string.data(), string.size());
    text[string.size()] = '\0';

    Containers::Array<Implementation::JsonTokenData> tokens;
    Tokenizer tokenizer{text, tokens};
    if(tokenizer.run())
        return Json{std::move(text), std::move(tokens)};

    Error{} << "Utility::Json::fromString(): not JSON from byte"
            << tokenizer.offset() << "on";
    return {};
}

Json::Json(Containers::Array<char>&& text,
    Containers::Array<Implementation::JsonTokenData>&& tokens) noexcept:
    _text{std::move(text)},
    _tokens{std::move(tokens)} {}

Json::Json(Json&&) noexcept = default;

Json::~Json() = default;

Json& Json::operator=(Json&&) noexcept = default;

JsonToken::Type JsonToken::type() const {
    return _data->type;
}

JsonObjectView JsonToken::asObject() const {
    CORRADE_ASSERT(type() == Type::Object,
        "Utility::JsonToken::asObject(): not an object",
        (JsonObjectView{JsonObjectIterator{*this}, JsonObjectIterator{*this}}));
    return JsonObjectView{JsonObjectIterator{JsonToken{_data + 1}},
        JsonObjectIterator{JsonToken{_data + 1 + _data->size}}};
}

JsonIterator JsonToken::find(const Containers::StringView key) const {
    for(const JsonObjectItem i: asObject())
        if(i.key() == key)
            return i.value();
    return {};
}

JsonToken JsonToken::operator[](const Containers::StringView key) const {
    const JsonIterator found = find(key);
    CORRADE_ASSERT(found,
        "Utility::JsonToken::operator[](): key" << key << "not found", *this);
    return *found;
}

Containers::StringView JsonToken::asString() const {
    CORRADE_ASSERT(type() == Type::String,
        "Utility::JsonToken::asString(): not a string", {});
    return {_data->text, _data->size};
}

JsonToken JsonObjectItem::value() const {
    return JsonToken{_key._data + 1};
}

JsonObjectIterator& JsonObjectIterator::operator++() {
    const Implementation::JsonTokenData* const value = _token._data + 1;
    const bool isContainer = value->type == JsonToken::Type::Object ||
        value->type == JsonToken::Type::Array;
    _token._data = value + 1 + (isContainer ? value->size : 0);
    return *this;
}

}}
