#include "session/projectJson.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include "session/ProjectLook.h"
#include "shared/Implementation/utf8.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine {

namespace {

using namespace Containers::Literals;

constexpr Containers::StringView ByteOrderMark = "\xef\xbb\xbf"_s;
constexpr Containers::StringView NoObject = "The root is no object"_s;

Containers::String tooDeep(unsigned int maxDepth) {
    return Utility::format("More than {} nested levels", maxDepth);
}

/* Passes everything on to the document, up to a depth. That also keeps the
   reader, which recurses, from taking too much of the call stack. Numbers that
   RapidJSON would change are converted here. */
class ProjectHandler {
public:
    typedef char Ch;

    explicit ProjectHandler(JsonDocument& out,
        const rapidjson::StringStream& input, const char* end,
        unsigned int maxDepth):
        _out(out),
        _input(input), _end{end}, _maxDepth{maxDepth} {}

    bool Null() { return _out.Null(); }
    bool Bool(bool b) { return _out.Bool(b); }
    bool Int(int i) {
        /* No integer is a negative zero */
        return i || *at() != '-' ? _out.Int(i) : _out.Double(-0.0);
    }
    bool Uint(unsigned i) { return _out.Uint(i); }
    bool Int64(std::int64_t i) { return _out.Int64(i); }
    bool Uint64(std::uint64_t i) { return _out.Uint64(i); }
    bool Double(double rough);
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }
    bool String(const char* s, rapidjson::SizeType size, bool copy) {
        return _out.String(s, size, copy);
    }
    bool Key(const char* s, rapidjson::SizeType size, bool copy) {
        return _out.Key(s, size, copy);
    }
    bool StartObject() { return enter() && _out.StartObject(); }
    bool StartArray() { return enter() && _out.StartArray(); }
    bool EndObject(rapidjson::SizeType size) {
        --_depth;
        return _out.EndObject(size);
    }
    bool EndArray(rapidjson::SizeType size) {
        --_depth;
        return _out.EndArray(size);
    }

    /* Why and where it refused to go on; null if it didn't */
    const Containers::String& fault() const { return _fault; }
    const char* faultAt() const { return _faultAt; }

private:
    /* The begin of a number, which the reader leaves when it's done with it;
       right after the begin of an object or array */
    const char* at() const { return _input.src_; }

    bool refuse(Containers::String&& fault, const char* where) {
        _fault = std::move(fault);
        _faultAt = where;
        return false;
    }
    bool enter() {
        return _depth++ != _maxDepth || refuse(tooDeep(_maxDepth), at() - 1);
    }

    JsonDocument& _out;
    const rapidjson::StringStream& _input;
    const char* _end;
    unsigned int _maxDepth;
    unsigned int _depth = 0;
    Containers::String _fault;
    const char* _faultAt = nullptr;
};

/* RapidJSON's own conversion with full precision shifts by an undefined number
   of bits for zeros such as 0e23, and the other is a little off */
bool ProjectHandler::Double(double rough) {
    double exact;
    const std::from_chars_result result = std::from_chars(at(), _end, exact);
    /* All digits, thus an integer of more than 64 bits */
    if(std::find_if(at(), result.ptr, [](char c) {
           return c == '.' || c == 'e' || c == 'E';
       }) == result.ptr)
        return refuse("An integer that doesn't fit 64 bits", at());
    if(result.ec == std::errc{})
        return _out.Double(exact);
    if(std::abs(rough) > 1.0)
        return refuse("Number too big to be stored in double", at());
    return _out.Double(*at() == '-' ? -0.0 : 0.0);
}

Containers::String place(Containers::StringView json, std::size_t offset) {
    std::size_t line = 1;
    std::size_t column = 1;
    for(std::size_t i = 0; i != offset && i != json.size(); ++i) {
        if(json[i] == '\n') {
            ++line;
            column = 1;
        } else if((static_cast<unsigned char>(json[i]) & 0xc0) != 0x80)
            ++column;
    }
    return Utility::format("line {}, column {}", line, column);
}

Containers::String fault(Containers::StringView what,
    Containers::StringView json, std::size_t offset) {
    return Utility::format("{} at {}", what, place(json, offset));
}

/* Stops the reader at the member with given positions */
class MemberSearch
    : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, MemberSearch> {
public:
    explicit MemberSearch(const rapidjson::StringStream& input,
        Containers::ArrayView<const std::size_t> positions):
        _input(input),
        _positions{positions} {}

    bool Key(const char*, rapidjson::SizeType, bool) {
        /* In the objects around the member alone */
        if(_depth != _found + 1 || _seen++ != _positions[_found])
            return true;
        _seen = 0;
        /* The reader moves on once it has passed on the name */
        _offset = _input.Tell();
        return ++_found != _positions.size();
    }
    bool StartObject() {
        ++_depth;
        return true;
    }
    bool StartArray() { return StartObject(); }
    bool EndObject(rapidjson::SizeType) {
        --_depth;
        return true;
    }
    bool EndArray(rapidjson::SizeType) { return EndObject(0); }

    std::size_t offset() const { return _offset; }

private:
    const rapidjson::StringStream& _input;
    Containers::ArrayView<const std::size_t> _positions;
    std::size_t _offset = 0;
    std::size_t _depth = 0;
    std::size_t _found = 0;
    std::size_t _seen = 0;
};

Containers::StringView withoutMark(Containers::StringView content) {
    return content.hasPrefix(ByteOrderMark)
        ? content.exceptPrefix(ByteOrderMark)
        : content;
}

/* Where half of a surrogate pair is escaped without the other; the end if
   nowhere. RapidJSON takes the second one alone. */
const char* findHalf(Containers::StringView json) {
    const char* const end = json.end();
    for(const char* i = json.begin(); i != end; i = nextEscape(i, end)) {
        const unsigned high = escapedUnit(i, end);
        if(high < 0xd800 || high > 0xdfff)
            continue;
        const unsigned low = escapedUnit(i + 6, end);
        if(high > 0xdbff || low < 0xdc00 || low > 0xdfff)
            return i;
        i += 6;
    }
    return end;
}

Containers::String textFault(Containers::StringView json) {
    const std::size_t size = utf8Size(json);
    if(size != json.size())
        return fault("Text that isn't UTF-8", json, size);
    const char* const half = findHalf(json);
    if(half != json.end())
        return fault(
            "Half of a surrogate pair", json, std::size_t(half - json.begin()));
    return {};
}

Containers::String read(JsonDocument& document, Containers::StringView json,
    unsigned int maxDepth) {
    rapidjson::StringStream input{json.data()};
    ProjectHandler handler{document, input, json.end(), maxDepth};
    rapidjson::ParseResult result;
    auto run = [&](JsonDocument&) {
        rapidjson::Reader reader;
        result = reader.Parse(input, handler);
        return !result.IsError();
    };
    document.Populate(run);

    if(handler.faultAt())
        return fault(handler.fault(), json,
            std::size_t(handler.faultAt() - json.begin()));
    /* RapidJSON takes one for the end */
    const std::size_t end = result.IsError() ? result.Offset() : input.Tell();
    if(end < json.size() && !json[end])
        return fault("A zero byte", json, end);
    if(result.IsError()) {
        const Containers::StringView sentence =
            rapidjson::GetParseError_En(result.Code());
        return fault(sentence.exceptSuffix("."), json, end);
    }
    return document.IsObject() ? Containers::String{}
                               : fault(NoObject, json, 0);
}

/* Ends where it's too deep, thus before that is too much for the call stack */
class ProjectWriter {
public:
    explicit ProjectWriter(Containers::Array<char>& out,
        const ProjectLook& look, unsigned int maxDepth):
        _out(out),
        _look(look), _maxDepth{maxDepth} {}

    bool write(const JsonValue& value);
    Containers::String fault() const;
    std::size_t lost() const { return _lost; }

private:
    void put(Containers::StringView text) { append(_out, text); }
    void put(char c) { arrayAppend(_out, c); }
    void newLine();
    void beginItem(bool first, bool oneLine);
    bool enter(char bracket);
    void leave(char bracket, bool empty, bool oneLine);

    bool writeObject(const JsonValue& object);
    bool writeArray(const JsonValue& array);
    void writeNumber(const JsonValue& number);
    void writeReal(double number);
    bool writeText(const JsonValue& text);
    void escape(unsigned unit);
    const char* writeEscaped(const char* begin, const char* end);
    bool isPlain(char c) const {
        return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\' &&
            !(_look.ascii && (c & '\x80'));
    }

    Containers::Array<char>& _out;
    const ProjectLook& _look;
    unsigned int _maxDepth;
    unsigned int _depth = 0;
    std::size_t _lost = 0;
    bool _tooDeep = false;
    /* Of the text that isn't UTF-8, put together while returning from it */
    Containers::String _path;
};

bool ProjectWriter::write(const JsonValue& value) {
    switch(value.GetType()) {
    case rapidjson::kObjectType:
        return writeObject(value);
    case rapidjson::kArrayType:
        return writeArray(value);
    case rapidjson::kStringType:
        return writeText(value);
    case rapidjson::kNumberType:
        writeNumber(value);
        return true;
    default:
        put(value.IsNull() ? "null" : value.IsTrue() ? "true" : "false");
        return true;
    }
}

Containers::String ProjectWriter::fault() const {
    return _tooDeep ? tooDeep(_maxDepth)
                    : Utility::format("A text that isn't UTF-8 at {}", _path);
}

void ProjectWriter::newLine() {
    put(_look.lineEnd);
    for(unsigned int i = 0; i != _depth; ++i)
        put(_look.indent);
}

void ProjectWriter::beginItem(bool first, bool oneLine) {
    if(!first)
        put(oneLine ? Containers::StringView{_look.comma} : ","_s);
    if(!oneLine)
        newLine();
}

bool ProjectWriter::enter(char bracket) {
    _tooDeep = _depth++ == _maxDepth;
    put(bracket);
    return !_tooDeep;
}

void ProjectWriter::leave(char bracket, bool empty, bool oneLine) {
    --_depth;
    if(empty ? _look.openEmpty : !oneLine)
        newLine();
    put(bracket);
}

bool ProjectWriter::writeObject(const JsonValue& object) {
    if(!enter('{'))
        return false;
    const bool oneLine = _look.lineEnd.isEmpty();
    for(auto i = object.MemberBegin(); i != object.MemberEnd(); ++i) {
        beginItem(i == object.MemberBegin(), oneLine);
        const bool named = writeText(i->name);
        put(_look.colon);
        if(named && write(i->value))
            continue;
        if(!_tooDeep)
            _path = Utility::format("/{}{}",
                RecordPath::segment(
                    {i->name.GetString(), i->name.GetStringLength()}),
                _path);
        return false;
    }
    leave('}', object.ObjectEmpty(), oneLine);
    return true;
}

bool ProjectWriter::writeArray(const JsonValue& array) {
    if(!enter('['))
        return false;
    const bool oneLine = _look.lineEnd.isEmpty() ||
        (_look.oneLineArrays &&
            std::none_of(array.Begin(), array.End(), [](const JsonValue& i) {
                return i.IsObject() || i.IsArray();
            }));
    for(rapidjson::SizeType i = 0; i != array.Size(); ++i) {
        beginItem(!i, oneLine);
        if(write(array[i]))
            continue;
        if(!_tooDeep)
            _path = Utility::format("/{}{}", i, _path);
        return false;
    }
    leave(']', array.Empty(), oneLine);
    return true;
}

void ProjectWriter::writeNumber(const JsonValue& number) {
    if(number.IsDouble()) {
        writeReal(number.GetDouble());
        return;
    }
    char digits[24];
    const char* const end = number.IsInt64()
        ? std::to_chars(digits, std::end(digits), number.GetInt64()).ptr
        : std::to_chars(digits, std::end(digits), number.GetUint64()).ptr;
    put({digits, std::size_t(end - digits)});
}

/* With the fewest digits that mean this double, so that 27.18933 stays it.
   RapidJSON's writer has more for some. */
void ProjectWriter::writeReal(double number) {
    if(!std::isfinite(number)) {
        ++_lost;
        put("null");
        return;
    }
    const double size = std::abs(number);
    const bool fixed = size == 0.0 || (size >= 1e-6 && size < 1e21);
    char digits[64];
    const char* const end = std::to_chars(digits, std::end(digits), number,
        fixed ? std::chars_format::fixed : std::chars_format::scientific)
                                .ptr;
    const Containers::StringView all{digits, std::size_t(end - digits)};
    if(fixed) {
        put(all);
        /* It has to stay a double */
        if(!all.contains('.'))
            put(".0");
        return;
    }
    /* 1e+07 is written as 1e7 */
    const char* exponent = all.findOr('e', end).end();
    put(all.prefix(exponent));
    if(*exponent++ == '-')
        put("-");
    put(all.suffix(*exponent == '0' ? exponent + 1 : exponent));
}

void ProjectWriter::escape(unsigned unit) {
    const Containers::StringView digits =
        _look.lowerCaseDigits ? "0123456789abcdef"_s : "0123456789ABCDEF"_s;
    put("\\u");
    for(int shift = 12; shift >= 0; shift -= 4)
        put(digits[(unit >> shift) & 0xf]);
}

/* A character that can't be written as it is. Returns where the next begins. */
const char* ProjectWriter::writeEscaped(const char* begin, const char* end) {
    const Containers::StringView characters = "\"\\\b\f\n\r\t"_s;
    const Containers::StringView letters = "\"\\bfnrt"_s;
    for(std::size_t i = 0; i != characters.size(); ++i)
        if(*begin == characters[i]) {
            put('\\');
            put(letters[i]);
            return begin + 1;
        }

    rapidjson::MemoryStream stream{begin, std::size_t(end - begin)};
    unsigned codePoint;
    rapidjson::UTF8<>::Decode(stream, &codePoint);
    if(codePoint >= 0x10000) {
        escape(0xd800 + ((codePoint - 0x10000) >> 10));
        codePoint = 0xdc00 + (codePoint & 0x3ff);
    }
    escape(codePoint);
    return begin + stream.Tell();
}

bool ProjectWriter::writeText(const JsonValue& text) {
    const Containers::StringView all{text.GetString(), text.GetStringLength()};
    if(utf8Size(all) != all.size())
        return false;
    put('"');
    for(const char* i = all.begin(); i != all.end();) {
        const char* const plainEnd =
            std::find_if(i, all.end(), [this](char c) { return !isPlain(c); });
        put({i, std::size_t(plainEnd - i)});
        i = plainEnd == all.end() ? plainEnd
                                  : writeEscaped(plainEnd, all.end());
    }
    put('"');
    return true;
}

}

Containers::String parseProject(JsonDocument& document,
    Containers::StringView content, unsigned int maxDepth) {
    const Containers::String terminated =
        Containers::String::nullTerminatedView(content);
    const Containers::StringView json = withoutMark(terminated);
    Containers::String fault = textFault(json);
    return fault.isEmpty() ? read(document, json, maxDepth) : fault;
}

Containers::String memberPlace(Containers::StringView content,
    Containers::ArrayView<const std::size_t> positions) {
    const Containers::String terminated =
        Containers::String::nullTerminatedView(content);
    const Containers::StringView json = withoutMark(terminated);
    rapidjson::StringStream input{json.data()};
    MemberSearch search{input, positions};
    rapidjson::Reader{}.Parse(input, search);
    return place(json, search.offset());
}

Containers::String writeProject(const JsonValue& document,
    const ProjectLook& look, Containers::Array<char>& out, std::size_t& lost,
    unsigned int maxDepth) {
    if(!document.IsObject())
        return NoObject;
    append(out, look.before);
    Containers::String fault = writeValue(document, look, out, lost, maxDepth);
    append(out, look.after);
    return fault;
}

Containers::String writeValue(const JsonValue& value, const ProjectLook& look,
    Containers::Array<char>& out, std::size_t& lost, unsigned int maxDepth) {
    ProjectWriter writer{out, look, maxDepth};
    const bool written = writer.write(value);
    lost = writer.lost();
    return written ? Containers::String{} : writer.fault();
}

void append(Containers::Array<char>& out, Containers::StringView text) {
    arrayAppend(
        out, Containers::ArrayView<const char>{text.data(), text.size()});
}

}
