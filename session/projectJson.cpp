#include "session/projectJson.h"

#include <charconv>
#include <cmath>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>

namespace OrrelinEngine {

namespace {

using namespace Containers::Literals;

constexpr Containers::StringView ByteOrderMark = "\xef\xbb\xbf"_s;

/* A stream that knows its length. RapidJSON takes a NUL as the end of input,
   so one that is in it is passed on as a character that is never valid. */
class Input {
public:
    typedef char Ch;

    explicit Input(Containers::StringView json):
        _begin{json.begin()}, _at{json.begin()}, _end{json.end()} {}

    char Peek() const { return _at == _end ? '\0' : *_at ? *_at : '\x01'; }
    char Take() {
        const char c = Peek();
        if(_at != _end)
            ++_at;
        return c;
    }
    std::size_t Tell() const { return std::size_t(_at - _begin); }

    char* PutBegin() { return nullptr; }
    void Put(char) {}
    void Flush() {}
    std::size_t PutEnd(char*) { return 0; }

private:
    const char* _begin;
    const char* _at;
    const char* _end;
};

/* Passes everything on to the document, up to a depth, with numbers
   converted */
struct ProjectHandler {
    typedef char Ch;

    bool Null() { return out.Null(); }
    bool Bool(bool b) { return out.Bool(b); }
    /* All numbers come raw */
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
    bool RawNumber(const char* s, rapidjson::SizeType size, bool) {
        return number({s, size});
    }
    bool String(const char* s, rapidjson::SizeType size, bool copy) {
        return out.String(s, size, copy);
    }
    bool Key(const char* s, rapidjson::SizeType size, bool copy) {
        return out.Key(s, size, copy);
    }
    bool StartObject() { return enter() && out.StartObject(); }
    bool StartArray() { return enter() && out.StartArray(); }
    bool EndObject(rapidjson::SizeType size) {
        --depth;
        return out.EndObject(size);
    }
    bool EndArray(rapidjson::SizeType size) {
        --depth;
        return out.EndArray(size);
    }

    bool enter() { return ++depth <= maxDepth; }
    bool number(Containers::StringView text);

    JsonDocument& out;
    unsigned int maxDepth;
    unsigned int depth = 0;
    bool numberTooBig = false;
};

template<class T> bool parseNumber(Containers::StringView text, T& out) {
    const std::from_chars_result result =
        std::from_chars(text.begin(), text.end(), out);
    return result.ec == std::errc{} && result.ptr == text.end();
}

/* RapidJSON's own conversion with full precision shifts by an undefined number
   of bits for zeros such as 0e23 */
bool ProjectHandler::number(Containers::StringView text) {
    std::int64_t integer;
    std::uint64_t large;
    double real;
    if(parseNumber(text, integer))
        return out.Int64(integer);
    if(parseNumber(text, large))
        return out.Uint64(large);
    if(parseNumber(text, real))
        return out.Double(real);

    /* What is too large for a double isn't for a wider one, as the reader
       refuses larger exponents. All else is too small. */
    long double wide;
    numberTooBig = parseNumber(text, wide) && std::abs(wide) > 1.0L;
    return !numberTooBig && out.Double(text.hasPrefix('-') ? -0.0 : 0.0);
}

Containers::String fault(Containers::StringView what,
    Containers::StringView json, std::size_t offset) {
    std::size_t line = 1;
    std::size_t column = 1;
    for(std::size_t i = 0; i != offset && i != json.size(); ++i) {
        if(json[i] == '\n') {
            ++line;
            column = 1;
        } else if((static_cast<unsigned char>(json[i]) & 0xc0) != 0x80)
            ++column;
    }
    return Utility::format("{} at line {}, column {}", what, line, column);
}

/* Writes numbers that JSON can't tell as null. Ends where it's too deep, thus
   before that is too much for the call stack. */
class ProjectWriter: public rapidjson::PrettyWriter<rapidjson::StringBuffer> {
public:
    explicit ProjectWriter(rapidjson::StringBuffer& out, unsigned int maxDepth):
        PrettyWriter{out}, _maxDepth{maxDepth} {}

    bool Double(double d) {
        if(std::isfinite(d))
            return PrettyWriter::Double(d);
        ++lost;
        return Null();
    }
    bool StartObject() { return enter() && PrettyWriter::StartObject(); }
    bool StartArray() { return enter() && PrettyWriter::StartArray(); }

    std::size_t lost = 0;

private:
    bool enter() const {
        return level_stack_.GetSize() < _maxDepth * sizeof(Level);
    }

    unsigned int _maxDepth;
};

Containers::String tooDeep(unsigned int maxDepth) {
    return Utility::format("More than {} nested levels", maxDepth);
}

constexpr Containers::StringView NoObject = "The root is no object"_s;

}

Containers::String parseProject(JsonDocument& document,
    Containers::StringView content, unsigned int maxDepth) {
    const Containers::StringView json = content.hasPrefix(ByteOrderMark)
        ? content.exceptPrefix(ByteOrderMark)
        : content;
    Input input{json};
    rapidjson::ParseResult result;
    ProjectHandler handler{document, maxDepth};
    auto read = [&](JsonDocument&) {
        rapidjson::Reader reader;
        result = reader.Parse<rapidjson::kParseIterativeFlag |
            rapidjson::kParseNumbersAsStringsFlag>(input, handler);
        return !result.IsError();
    };
    document.Populate(read);

    if(handler.numberTooBig)
        result.Set(rapidjson::kParseErrorNumberTooBig, result.Offset());
    else if(handler.depth > maxDepth)
        return fault(tooDeep(maxDepth), json, result.Offset());
    if(result.IsError()) {
        const Containers::StringView sentence =
            rapidjson::GetParseError_En(result.Code());
        return fault(sentence.exceptSuffix("."), json, result.Offset());
    }
    if(!document.IsObject())
        return fault(NoObject, json, 0);
    return {};
}

Containers::String writeProject(const JsonValue& document,
    rapidjson::StringBuffer& out, std::size_t& lost, unsigned int maxDepth) {
    if(!document.IsObject())
        return NoObject;
    ProjectWriter writer{out, maxDepth};
    if(!document.Accept(writer))
        return tooDeep(maxDepth);
    out.Put('\n');
    lost = writer.lost;
    return {};
}

}
