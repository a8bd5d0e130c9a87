#include "LanguageFileFaults.h"

#include <string>
#include <string_view>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/reader.h>

#include "TextPlaces.h"
#include "session/EditorSession.h"
#include "terminal/Messages.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* Follows a reader through "translation" and collects a line for each value
   that is no text */
class TypeCheck {
public:
    typedef char Ch;

    explicit TypeCheck(
        const LanguageFile& file, const rapidjson::StringStream& input):
        _file(file),
        _input(input), _counted{input.src_} {}

    bool Null() { return true; }
    bool Bool(bool) { return add(); }
    /* All numbers come raw */
    bool Int(int) { return add(); }
    bool Uint(unsigned) { return add(); }
    bool Int64(std::int64_t) { return add(); }
    bool Uint64(std::uint64_t) { return add(); }
    bool Double(double) { return add(); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return add(); }
    bool String(const char*, rapidjson::SizeType, bool) { return true; }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        if(_depth == 1)
            _isInside = Containers::StringView{text, size} == "translation";
        else if(_depth == 2) {
            _key.assign(text, size);
            /* The reader moves on once it has passed on the text */
            _keyBegin = _input.src_;
        }
        return true;
    }
    bool StartObject() {
        add();
        ++_depth;
        return true;
    }
    bool EndObject(rapidjson::SizeType) {
        --_depth;
        return true;
    }
    bool StartArray() { return StartObject(); }
    bool EndArray(rapidjson::SizeType) { return EndObject(0); }

    const Lines& lines() const { return _lines; }

private:
    bool add() {
        if(!_isInside || _depth != 2)
            return true;
        _counted = countPlace(_counted, _keyBegin, _place);
        _lines.add(std::string{Utility::format(
            "{}: the value of '{}' at line {}, column {} is neither a text nor "
            "null, and is left out",
            _file.path, Containers::StringView{_key}, _place.line,
            _place.column)});
        return true;
    }

    const LanguageFile& _file;
    const rapidjson::StringStream& _input;
    Lines _lines;
    const char* _counted;
    const char* _keyBegin = nullptr;
    Place _place;
    unsigned int _depth = 0;
    bool _isInside = false;
    std::string _key;
};

}

FaultTeller::FaultTeller(const LanguageFile& file): _file(file) {
    const std::string_view text{file.content.data(), file.content.size()};
    /* Escaped surrogates are put together in place */
    if(text.find("\\ud") != text.npos || text.find("\\uD") != text.npos)
        _copy = Containers::StringView{text.data(), text.size()};
}

Containers::StringView FaultTeller::content() const {
    return _copy.isEmpty()
        ? Containers::StringView{_file.content.data(), _file.content.size()}
        : Containers::StringView{_copy};
}

void FaultTeller::tell() const {
    /* Language files are JSON like projects, and opening one tells the place */
    if(succeedsOrFails(
           [&] { return EditorSession{}.open(_file.path, content()); }))
        fail(Utility::format(
            "{} has no object \"translation\" with its texts", _file.path));
}

void FaultTeller::tellWrongTypes() const {
    const Containers::String text{content()};
    rapidjson::StringStream input{text.data()};
    TypeCheck check{_file, input};
    rapidjson::Reader{}
        .Parse<rapidjson::kParseIterativeFlag |
            rapidjson::kParseNumbersAsStringsFlag>(input, check);
    check.lines().print();
}

}}
