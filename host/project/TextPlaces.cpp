#include "TextPlaces.h"

#include <string>
#include <Corrade/Containers/StringStl.h>
#include <rapidjson/reader.h>

namespace OrrelinEngine { namespace Host {

namespace {

typedef std::function<void(
    Containers::StringView, Containers::StringView, const Place&)>
    PlaceFunction;

/* Follows a reader through "translation" */
class PlaceReader
    : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, PlaceReader> {
public:
    explicit PlaceReader(
        const rapidjson::StringStream& input, const PlaceFunction& function):
        _input(input),
        _function(function), _counted{input.src_} {}

    bool Key(const char* text, rapidjson::SizeType size, bool) {
        if(_depth == 1)
            _isInside = Containers::StringView{text, size} == "translation";
        else if(_depth == 2)
            _key.assign(text, size);
        return true;
    }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        if(_isInside && _depth == 2) {
            /* The reader moves on once it has passed on the text */
            _counted = countPlace(_counted, _input.src_, _place);
            _function(_key, {text, size}, _place);
        }
        return true;
    }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return true; }
    bool StartObject() {
        ++_depth;
        return true;
    }
    bool EndObject(rapidjson::SizeType) {
        --_depth;
        return true;
    }
    bool StartArray() { return StartObject(); }
    bool EndArray(rapidjson::SizeType) { return EndObject(0); }

private:
    const rapidjson::StringStream& _input;
    const PlaceFunction& _function;
    const char* _counted;
    Place _place;
    unsigned int _depth = 0;
    bool _isInside = false;
    std::string _key;
};

}

const char* countPlace(const char* from, const char* to, Place& place) {
    for(; from != to; ++from) {
        if(*from == '\n') {
            ++place.line;
            place.column = 1;
        } else
            place.column += (*from & '\xc0') != '\x80';
    }
    return to;
}

void forEachPlace(
    const Containers::String& content, const PlaceFunction& function) {
    rapidjson::StringStream input{content.data()};
    PlaceReader handler{input, function};
    rapidjson::Reader{}
        .Parse<rapidjson::kParseIterativeFlag |
            rapidjson::kParseNumbersAsStringsFlag>(input, handler);
}

}}
