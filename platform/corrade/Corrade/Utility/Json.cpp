#include "Corrade/Utility/Json.h"

#include <charconv>
#include <string>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/Containers/String.h"
#include "Corrade/Utility/Implementation/jsonText.h"

namespace Corrade { namespace Utility {

using namespace Containers::Literals;

class JsonTokenData {
public:
    /* Place in the text. For containers the size is known once they end. */
    std::size_t offset, size;

    /* For containers count of tokens inside, or the index of the parent
       container until they end. For strings with escape sequences index
       of the decoded string. */
    std::uint64_t childCountOrString : 56;

    std::uint64_t type : 3;
    std::uint64_t key : 1;
    std::uint64_t parsed : 1;
    std::uint64_t escaped : 1;
};

namespace Implementation {

struct JsonData {
    Containers::String text;
    Containers::Array<JsonTokenData> tokens;

    /* All decoded strings with escape sequences together, and where each of
       them ends */
    std::string strings;
    Containers::Array<std::size_t> stringEnds;

    Containers::StringView string(std::size_t i) const {
        const std::size_t begin = i ? stringEnds[i - 1] : 0;
        return {strings.data() + begin, stringEnds[i] - begin};
    }
};

}

namespace {

constexpr std::uint64_t NoParent = (std::uint64_t{1} << 56) - 1;

class Tokenizer {
public:
    explicit Tokenizer(Implementation::JsonData& data, Json::Options options):
        _data(data), _begin{data.text.begin()}, _end{data.text.end()},
        _at{_begin}, _options{options} {
        /* Enough for usual texts, so there's no need to grow */
        arrayReserve(_data.tokens, data.text.size() / 32 + 1);
    }

    /* Null on success, what's wrong at offset() otherwise */
    const char* run();

    std::size_t offset() const { return _at - _begin; }

private:
    enum class Expecting {
        Value,
        ValueOrArrayEnd,
        Key,
        KeyOrObjectEnd,
        CommaOrEnd,
        Nothing
    };

    void skipWhitespace();
    const char* value();
    const char* key();
    const char* commaOrEnd();
    const char* string(bool key);
    const char* escape();
    const char* unicodeEscape();
    const char* number();
    const char* literal(Containers::StringView literal, JsonToken::Type type);

    JsonTokenData& add(JsonToken::Type type, const char* begin, bool parsed);
    void beginContainer(JsonToken::Type type);
    const char* endContainer();
    void endValue();

    Implementation::JsonData& _data;
    const char* const _begin;
    const char* const _end;
    const char* _at;
    Json::Options _options;
    std::uint64_t _parent = NoParent;
    Expecting _expecting = Expecting::Value;
};

const char* Tokenizer::run() {
    for(;;) {
        skipWhitespace();
        if(_at == _end)
            return _expecting == Expecting::Nothing
                ? nullptr
                : "unexpected end of the document";

        const char* error = nullptr;
        switch(_expecting) {
        case Expecting::ValueOrArrayEnd:
            error = *_at == ']' ? endContainer() : value();
            break;
        case Expecting::Value:
            error = value();
            break;
        case Expecting::KeyOrObjectEnd:
            error = *_at == '}' ? endContainer() : key();
            break;
        case Expecting::Key:
            error = key();
            break;
        case Expecting::CommaOrEnd:
            error = commaOrEnd();
            break;
        case Expecting::Nothing:
            error = "unexpected text after the root value";
            break;
        }
        if(error)
            return error;
    }
}

void Tokenizer::skipWhitespace() {
    while(_at != _end &&
        (*_at == ' ' || *_at == '\n' || *_at == '\t' || *_at == '\r'))
        ++_at;
}

JsonTokenData& Tokenizer::add(
    const JsonToken::Type type, const char* const begin, const bool parsed) {
    JsonTokenData& out = arrayAppend(_data.tokens, InPlaceInit);
    out.type = std::uint64_t(type);
    out.offset = begin - _begin;
    out.size = _at - begin;
    out.parsed = parsed;
    return out;
}

void Tokenizer::beginContainer(const JsonToken::Type type) {
    add(type, _at++, _options >= Json::Option::ParseLiterals)
        .childCountOrString = _parent;
    _parent = _data.tokens.size() - 1;
    _expecting = type == JsonToken::Type::Object ? Expecting::KeyOrObjectEnd
                                                 : Expecting::ValueOrArrayEnd;
}

const char* Tokenizer::endContainer() {
    ++_at;
    JsonTokenData& token = _data.tokens[_parent];
    const std::uint64_t parent = token.childCountOrString;
    token.size = offset() - token.offset;
    token.childCountOrString = _data.tokens.size() - _parent - 1;
    _parent = parent;
    endValue();
    return nullptr;
}

void Tokenizer::endValue() {
    _expecting =
        _parent == NoParent ? Expecting::Nothing : Expecting::CommaOrEnd;
}

const char* Tokenizer::value() {
    switch(*_at) {
    case '{':
        beginContainer(JsonToken::Type::Object);
        return nullptr;
    case '[':
        beginContainer(JsonToken::Type::Array);
        return nullptr;
    case '"':
        return string(false);
    case 'n':
        return literal("null"_s, JsonToken::Type::Null);
    case 't':
        return literal("true"_s, JsonToken::Type::Bool);
    case 'f':
        return literal("false"_s, JsonToken::Type::Bool);
    default:
        return number();
    }
}

const char* Tokenizer::key() {
    if(*_at != '"')
        return "expected an object key";
    if(const char* const error = string(true))
        return error;

    skipWhitespace();
    if(_at == _end || *_at != ':')
        return "expected a colon after an object key";
    ++_at;
    _expecting = Expecting::Value;
    return nullptr;
}

const char* Tokenizer::commaOrEnd() {
    const bool object =
        JsonToken::Type(_data.tokens[_parent].type) == JsonToken::Type::Object;
    if(*_at == (object ? '}' : ']'))
        return endContainer();
    if(*_at != ',')
        return object ? "expected a comma or an object end"
                      : "expected a comma or an array end";

    ++_at;
    _expecting = object ? Expecting::Key : Expecting::Value;
    return nullptr;
}

const char* Tokenizer::literal(
    const Containers::StringView literal, const JsonToken::Type type) {
    if(std::size_t(_end - _at) < literal.size() ||
        Containers::StringView{_at, literal.size()} != literal)
        return "invalid literal";

    const char* const begin = _at;
    _at += literal.size();
    add(type, begin, _options >= Json::Option::ParseLiterals);
    endValue();
    return nullptr;
}

const char* Tokenizer::number() {
    const char* const begin = _at;
    if(*_at != '-' && (*_at < '0' || *_at > '9'))
        return "expected a value";

    /* What's between is looked at only where a number is converted */
    constexpr Containers::StringView delimiters = "\t\r\n ,]}"_s;
    while(_at != _end && !delimiters.contains(*_at))
        ++_at;

    add(JsonToken::Type::Number, begin, false);
    endValue();
    return nullptr;
}

const char* Tokenizer::string(const bool key) {
    const char* const begin = _at++;
    const char* copied = _at;
    bool escaped = false;
    for(;;) {
        _at = Implementation::skipJsonText(_at, _end);
        if(_at == _end)
            return "unexpected end of a string";
        if(*_at == '"')
            break;
        if(static_cast<unsigned char>(*_at) < ' ')
            return "unescaped control character in a string";
        if(*_at != '\\') {
            /* Not UTF-8, which is up to the user */
            ++_at;
            continue;
        }

        escaped = true;
        _data.strings.append(copied, _at - copied);
        if(const char* const error = escape())
            return error;
        copied = _at;
    }
    ++_at;

    JsonTokenData& token = add(JsonToken::Type::String, begin,
        _options >=
            (key ? Json::Option::ParseStringKeys : Json::Option::ParseStrings));
    token.key = key;
    token.escaped = escaped;
    /* A string with no escape sequences stays just in the text */
    if(escaped) {
        _data.strings.append(copied, _at - 1 - copied);
        token.childCountOrString = _data.stringEnds.size();
        arrayAppend(_data.stringEnds, _data.strings.size());
    }
    if(!key)
        endValue();
    return nullptr;
}

const char* Tokenizer::escape() {
    constexpr Containers::StringView escapes = "\"\\/bfnrt"_s;
    constexpr Containers::StringView characters = "\"\\/\b\f\n\r\t"_s;

    if(_end - _at < 2)
        return "unexpected end of a string";
    if(_at[1] == 'u')
        return unicodeEscape();
    const Containers::StringView found = escapes.find(_at[1]);
    if(!found)
        return "invalid escape sequence";
    _data.strings += characters[found.begin() - escapes.begin()];
    _at += 2;
    return nullptr;
}

const char* Tokenizer::unicodeEscape() {
    unsigned code = 0;
    if(_end - _at < 6 ||
        std::from_chars(_at + 2, _at + 6, code, 16).ptr != _at + 6)
        return "invalid unicode escape sequence";
    _at += 6;

    /* The halves of a surrogate pair stay apart */
    if(code < 0x80)
        _data.strings += char(code);
    else if(code < 0x800)
        _data.strings += {char(0xc0 | (code >> 6)), char(0x80 | (code & 0x3f))};
    else
        _data.strings += {char(0xe0 | (code >> 12)),
            char(0x80 | ((code >> 6) & 0x3f)), char(0x80 | (code & 0x3f))};
    return nullptr;
}

}

Containers::Optional<Json> Json::fromString(const Containers::StringView string,
    const Options options, const Containers::StringView filename) {
    Containers::Pointer<Implementation::JsonData> data{InPlaceInit};
    data->text = Containers::String::nullTerminatedGlobalView(string);

    Tokenizer tokenizer{*data, options};
    if(const char* const error = tokenizer.run()) {
        const Containers::StringView before = string.prefix(tokenizer.offset());
        const Containers::StringView line =
            before.suffix(before.findLastOr('\n', before.begin()).end());
        Error{} << "Utility::Json:" << error << "at"
                << (filename ? filename : "<in>"_s) << Debug::nospace << ":"
                << Debug::nospace << before.count('\n') + 1 << Debug::nospace
                << ":" << Debug::nospace << line.size() + 1;
        return {};
    }

    return Json{std::move(data)};
}

Json::Json(Containers::Pointer<Implementation::JsonData>&& data) noexcept:
    _data{std::move(data)} {}

Json::Json(Json&&) noexcept = default;

Json::~Json() = default;

Json& Json::operator=(Json&&) noexcept = default;

JsonToken Json::root() const {
    return JsonToken{_data.get(), 0};
}

const JsonTokenData& JsonToken::token() const {
    return _data->tokens[_index];
}

void JsonToken::expect(const Type type, const char* const function) const {
    CORRADE_ASSERT(this->type() == type && token().parsed,
        "Utility::JsonToken::"
            << Debug::nospace << function << Debug::nospace << "(): token is"
            << (isParsed() ? "a parsed" : "an unparsed") << this->type(), );
}

Containers::StringView JsonToken::data() const {
    return Containers::StringView{_data->text}.sliceSize(
        token().offset, token().size);
}

JsonToken::Type JsonToken::type() const {
    return Type(token().type);
}

bool JsonToken::isParsed() const {
    return token().parsed;
}

std::size_t JsonToken::childCount() const {
    if(type() == Type::Object || type() == Type::Array)
        return token().childCountOrString;
    if(token().key)
        return 1 + JsonToken{_data, _index + 1}.childCount();
    return 0;
}

JsonObjectView JsonToken::asObject() const {
    expect(Type::Object, "asObject");
    return JsonObjectView{*this};
}

JsonArrayView JsonToken::asArray() const {
    expect(Type::Array, "asArray");
    return JsonArrayView{*this};
}

JsonIterator JsonToken::find(const Containers::StringView key) const {
    expect(Type::Object, "find");
    for(const JsonObjectItem i: JsonObjectView{*this})
        if(i.key() == key)
            return i.value();
    return {};
}

JsonIterator JsonToken::find(const std::size_t index) const {
    expect(Type::Array, "find");
    for(const JsonArrayItem i: JsonArrayView{*this})
        if(i.index() == index)
            return i.value();
    return {};
}

JsonToken JsonToken::operator[](const Containers::StringView key) const {
    const JsonIterator found = find(key);
    CORRADE_ASSERT(found,
        "Utility::JsonToken::operator[](): key" << key << "not found", *this);
    return *found;
}

JsonToken JsonToken::operator[](const std::size_t index) const {
    const JsonIterator found = find(index);
    CORRADE_ASSERT(found,
        "Utility::JsonToken::operator[](): index" << index << "not found",
        *this);
    return *found;
}

std::nullptr_t JsonToken::asNull() const {
    expect(Type::Null, "asNull");
    return nullptr;
}

bool JsonToken::asBool() const {
    expect(Type::Bool, "asBool");
    return data().hasPrefix('t');
}

Containers::StringView JsonToken::asString() const {
    expect(Type::String, "asString");
    return token().escaped ? _data->string(token().childCountOrString)
                           : data().slice(1, token().size - 1);
}

Debug& operator<<(Debug& debug, const JsonToken::Type value) {
    constexpr const char* names[]{
        "Object", "Array", "Null", "Bool", "Number", "String"};
    return debug << "Utility::JsonToken::Type::" << Debug::nospace
                 << names[int(value)];
}

}}
