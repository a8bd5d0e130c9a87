#include "session/ProjectLook.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>
#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "session/projectJson.h"
#include "shared/Implementation/utf8.h"

namespace OrrelinEngine {

namespace {

/* Settings and the first objects take less, and show how the rest looks */
constexpr std::size_t SearchedSize = 1 << 20;

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/* White space from a position on */
Containers::StringView spaceAt(const char* at, const char* end) {
    const char* i = at;
    while(i != end && isSpace(*i))
        ++i;
    return {at, std::size_t(i - at)};
}

bool breaksLine(Containers::StringView space) {
    return space.contains('\n');
}

const char* stringEnd(const char* quote, const char* end) {
    const char* i = quote + 1;
    while(i != end && *i != '"')
        i += *i == '\\' && end - i > 1 ? 2 : 1;
    return i == end ? end : i + 1;
}

/* Goes through the tokens and keeps each trait where it first shows. A reader
   as RapidJSON's can't, as it passes over white space. */
class Search {
public:
    explicit Search(ProjectLook& look): _look(look) {}

    void run(Containers::StringView json) {
        const char* const end = json.end();
        for(const char* i = json.begin(); i != end;) {
            const char c = *i;
            if(c == '"') {
                const char* const next = stringEnd(i, end);
                const Containers::StringView space = spaceAt(next, end);
                if(space.end() != end && *space.end() == ':')
                    colon(next, end);
                i = next;
                continue;
            }
            ++i;
            if(c == ',')
                comma(spaceAt(i, end));
            else if(c == '{' || c == '[')
                open(c, spaceAt(i, end), end);
            else if(c == '}' || c == ']')
                close();
        }
    }

private:
    void colon(const char* begin, const char* end) {
        const Containers::StringView before = spaceAt(begin, end);
        const Containers::StringView after = spaceAt(before.end() + 1, end);
        if(!_colon && !breaksLine(before) && !breaksLine(after))
            _look.colon = before + ":" + after;
        _colon = true;
    }

    void comma(Containers::StringView space) {
        if(_comma || breaksLine(space))
            return;
        _look.comma = "," + space;
        _comma = true;
    }

    void open(char bracket, Containers::StringView space, const char* end) {
        const bool empty =
            space.end() != end && (*space.end() == '}' || *space.end() == ']');
        if(empty && !_empty) {
            _look.openEmpty = breaksLine(space);
            _empty = true;
        }
        _inPlainArray = bracket == '[' && !empty;
        _breaksArray = breaksLine(space);
    }

    void close() {
        if(_inPlainArray && !_array) {
            _look.oneLineArrays = !_breaksArray;
            _array = true;
        }
        _inPlainArray = false;
    }

    ProjectLook& _look;
    bool _colon = false;
    bool _comma = false;
    bool _empty = false;
    bool _array = false;
    /* In an array that isn't empty, with no bracket since its own */
    bool _inPlainArray = false;
    /* Whether a line break follows the bracket that was opened last */
    bool _breaksArray = false;
};

void findLines(ProjectLook& look, Containers::StringView json,
    Containers::StringView root) {
    /* The root may have no line break, but the text around it one */
    const Containers::StringView shown = breaksLine(root) ? root : json;
    const char* const newLine = shown.findOr('\n', shown.end()).begin();
    if(newLine != shown.end() && newLine != shown.begin() &&
        newLine[-1] == '\r')
        look.lineEnd = "\r\n";

    const Containers::StringView space = spaceAt(root.begin() + 1, root.end());
    /* An empty root shows neither indentation nor whether all is in one line */
    if(space.end() == root.end() - 1)
        return;
    if(!breaksLine(root)) {
        look.lineEnd = {};
        look.indent = {};
    } else if(breaksLine(space))
        look.indent = space.suffix(space.findLastOr('\n', nullptr).end());
}

Containers::StringView beginOf(Containers::StringView json) {
    return json.prefix(json.size() < SearchedSize ? json.size() : SearchedSize);
}

/* An ASCII text is searched as a whole: the only character that is escaped to
   keep it so may be at the end. Of any other text, the beginning is enough. The
   first letter among the digits decides the case. */
void findEscapes(ProjectLook& look, Containers::StringView json) {
    const bool ascii = asciiEnd(json.begin(), json.end()) == json.end();
    const char* const end = ascii ? json.end() : beginOf(json).end();
    bool letter = false;
    for(const char* i = json.begin(); i != end && !(look.ascii && letter);
        i = nextEscape(i, end)) {
        const unsigned unit = escapedUnit(i, end);
        if(!unit)
            continue;
        for(const char* digit = i + 2; digit != i + 6; ++digit)
            if(*digit > '9' && !letter) {
                letter = true;
                look.lowerCaseDigits = *digit >= 'a';
            }
        look.ascii = look.ascii || (ascii && unit >= 0x80);
    }
}

/* Neither 1 and 1.0 are identical nor 0.0 and -0.0 */
bool isIdentical(const JsonValue& a, const JsonValue& b) {
    return a == b && a.IsDouble() == b.IsDouble() &&
        (!a.IsDouble() ||
            std::signbit(a.GetDouble()) == std::signbit(b.GetDouble()));
}

struct Item {
    /* Null in an array */
    const JsonValue* name;
    const JsonValue& value;
};

std::size_t sizeOf(const JsonValue& all) {
    return all.IsObject() ? all.MemberCount() : all.Size();
}

Item itemOf(const JsonValue& all, std::size_t i) {
    if(all.IsArray())
        return {nullptr, all[rapidjson::SizeType(i)]};
    const auto member = all.MemberBegin() + std::ptrdiff_t(i);
    return {&member->name, member->value};
}

/* Where the object or array at a bracket ends if it's empty, otherwise null */
const char* emptyEnd(const char* bracket, const char* end) {
    const char* const i = spaceAt(bracket + 1, end).end();
    return i != end && *i == (*bracket == '{' ? '}' : ']') ? i + 1 : nullptr;
}

/* The last line break in white space, with the indentation after it */
Containers::StringView lineOf(Containers::StringView space) {
    const char* i = space.findLastOr('\n', space.end()).begin();
    if(i != space.begin() && i != space.end() && i[-1] == '\r')
        --i;
    return {i, std::size_t(space.end() - i)};
}

/* Where an item is in a text */
struct Place {
    /* With the comma before it */
    const char* begin;
    /* The name, or the value in an array */
    const char* item;
    const char* nameEnd;
    const char* value;
};

typedef std::vector<const Place*> Places;

/* Writes a document over an older text of it. Goes through both side by side
   and copies what still means the same. All that is copied was compared, so the
   result is right whatever the text is. Takes one pass, and another one over
   objects and arrays whose items moved. */
class Update {
public:
    explicit Update(Containers::StringView text, const ProjectLook& look,
        Containers::Array<char>& out, unsigned int maxDepth):
        _at{text.begin()},
        _end{text.end()}, _look{look}, _out(out), _maxDepth{maxDepth} {}

    /* Writes a value over that at the current place, beside items that begin
       with the given line break, or none. Fails if the text isn't JSON or the
       value can't be written. */
    bool write(const JsonValue& value, Containers::StringView line);

    std::size_t lost() const { return _lost; }

private:
    void put(const char* begin, const char* end) {
        if(!_onlyCompares)
            append(_out, {begin, std::size_t(end - begin)});
    }
    void put(Containers::StringView text) { put(text.begin(), text.end()); }

    bool isAt(char c) const { return _at != _end && *_at == c; }
    bool pass(char c) { return isAt(c) && ++_at; }
    void passSpace() { _at = spaceAt(_at, _end).end(); }
    bool passValue();
    bool passToItem(bool isFirst);
    bool passName(Place& out);
    bool findItem(bool isFirst, bool isNamed, Place& out);

    bool spells(Containers::StringView text, const JsonValue& scalar);
    bool compare(const JsonValue& value);
    bool writeItems(const JsonValue& all);
    bool writeRest(
        const JsonValue& all, std::size_t begin, Containers::StringView space);
    bool writeItem(
        const Item& item, const Place* origin, Containers::StringView line);
    bool writeNew(const JsonValue& value, Containers::StringView line);
    Places originsByName(const JsonValue& object, std::size_t begin,
        const std::vector<Place>& places);
    Places originsByOrder(const JsonValue& array, std::size_t begin,
        const std::vector<Place>& places);

    const char* _at;
    const char* _end;
    ProjectLook _look;
    Containers::Array<char>& _out;
    unsigned int _maxDepth;
    unsigned int _depth = 0;
    std::size_t _lost = 0;
    /* Writes nothing and fails at the first difference */
    bool _onlyCompares = false;
    Containers::Array<char> _spelling;
};

bool Update::write(const JsonValue& value, Containers::StringView line) {
    const char* const begin = _at;
    const bool isNested =
        (value.IsObject() && isAt('{')) || (value.IsArray() && isAt('['));
    const bool isEmpty = isNested && emptyEnd(_at, _end);
    if(isNested && !isEmpty && sizeOf(value))
        return writeItems(value);
    if(!passValue())
        return false;
    if(isEmpty ? !sizeOf(value)
               : spells({begin, std::size_t(_at - begin)}, value)) {
        put(begin, _at);
        return true;
    }
    return !_onlyCompares && writeNew(value, line);
}

/* Doesn't check what it passes */
bool Update::passValue() {
    std::size_t depth = 0;
    do {
        if(_at == _end)
            return false;
        const char c = *_at;
        if(c == '"') {
            _at = stringEnd(_at, _end);
            continue;
        }
        ++_at;
        if(c == '{' || c == '[')
            ++depth;
        else if(c == '}' || c == ']') {
            if(!depth--)
                return false;
        } else if(!isSpace(c) && c != ',' && c != ':')
            _at = std::find_if(_at, _end, [](char i) {
                return isSpace(i) || i == ',' || i == '}' || i == ']';
            });
    } while(depth);
    return true;
}

bool Update::passToItem(bool isFirst) {
    passSpace();
    if(isFirst)
        return true;
    if(!pass(','))
        return false;
    passSpace();
    return true;
}

bool Update::passName(Place& out) {
    if(!isAt('"'))
        return false;
    out.nameEnd = _at = stringEnd(_at, _end);
    passSpace();
    if(!pass(':'))
        return false;
    passSpace();
    return true;
}

/* Goes to the value of the next item. Stays if there's no more. */
bool Update::findItem(bool isFirst, bool isNamed, Place& out) {
    out.begin = _at;
    if(passToItem(isFirst)) {
        out.item = _at;
        if(!isNamed || passName(out)) {
            out.value = _at;
            return true;
        }
    }
    _at = out.begin;
    return false;
}

/* Mostly the text is as the value would be written. Otherwise it's read in the
   way it was when the project was opened. */
bool Update::spells(Containers::StringView text, const JsonValue& scalar) {
    if(scalar.IsObject() || scalar.IsArray())
        return false;
    arrayRemoveSuffix(_spelling, _spelling.size());
    std::size_t lost = 0;
    if(!writeValue(scalar, _look, _spelling, lost, 0).isEmpty() || lost)
        return false;
    if(text == Containers::StringView{_spelling.data(), _spelling.size()})
        return true;
    JsonDocument read;
    return parseProject(read, "{\"\":" + text + "}", 1).isEmpty() &&
        read.MemberCount() == 1 &&
        isIdentical(read.MemberBegin()->value, scalar);
}

/* Whether the value is the same as the text, and then goes behind it */
bool Update::compare(const JsonValue& value) {
    const char* const begin = _at;
    const unsigned int depth = _depth;
    const bool before = std::exchange(_onlyCompares, true);
    const bool out = write(value, {});
    _onlyCompares = before;
    if(!out) {
        _at = begin;
        _depth = depth;
    }
    return out;
}

/* As long as the names of an object or the values of an array are the same, the
   next item is at the next place */
bool Update::writeItems(const JsonValue& all) {
    if(_depth == _maxDepth)
        return false;
    ++_depth;
    put(_at, _at + 1);
    ++_at;
    const Containers::StringView space = spaceAt(_at, _end);
    std::size_t i = 0;
    Place place;
    while(i != sizeOf(all) && findItem(i == 0, all.IsObject(), place)) {
        const Item item = itemOf(all, i);
        if(item.name
                ? !spells({place.item, std::size_t(place.nameEnd - place.item)},
                      *item.name)
                : !compare(item.value)) {
            _at = place.begin;
            break;
        }
        ++i;
        put(place.begin, _at);
        if(item.name && !write(item.value, lineOf(space)))
            return false;
    }
    if((_onlyCompares && i != sizeOf(all)) || !writeRest(all, i, space))
        return false;
    --_depth;
    return true;
}

bool Update::writeRest(
    const JsonValue& all, std::size_t begin, Containers::StringView space) {
    std::vector<Place> places;
    for(Place place;
        findItem(!begin && places.empty(), all.IsObject(), place);) {
        if(!passValue())
            return false;
        places.push_back(place);
    }
    const char* const itemsEnd = _at;
    passSpace();
    if(!pass(all.IsObject() ? '}' : ']') || (_onlyCompares && !places.empty()))
        return false;
    const char* const end = _at;

    const Containers::StringView line = lineOf(space);
    const Places origins = all.IsObject() ? originsByName(all, begin, places)
                                          : originsByOrder(all, begin, places);
    for(std::size_t i = begin; i != sizeOf(all); ++i) {
        const Place* const origin = origins[i - begin];
        const bool hasComma = origin && (begin || origin != places.data());
        if(!i)
            put(space);
        else if(hasComma)
            put(origin->begin, origin->item);
        else {
            put(line.isEmpty() ? Containers::StringView{_look.comma} : ",");
            put(line);
        }
        if(!writeItem(itemOf(all, i), origin, line))
            return false;
    }
    put(itemsEnd, end);
    _at = end;
    return true;
}

bool Update::writeItem(
    const Item& item, const Place* origin, Containers::StringView line) {
    if(origin) {
        put(origin->item, origin->value);
        _at = origin->value;
        return write(item.value, line);
    }
    if(item.name) {
        if(!writeNew(*item.name, line))
            return false;
        put(_look.colon);
    }
    return writeNew(item.value, line);
}

bool Update::writeNew(const JsonValue& value, Containers::StringView line) {
    _look.lineEnd = line;
    std::size_t lost = 0;
    const Containers::String fault =
        writeValue(value, _look, _out, lost, _maxDepth - _depth);
    _lost += lost;
    return fault.isEmpty();
}

/* Only names that are spelled as they would be written are found */
Places Update::originsByName(const JsonValue& object, std::size_t begin,
    const std::vector<Place>& places) {
    std::unordered_map<std::string_view, const Place*> all;
    for(const Place& place: places)
        all.emplace(std::string_view{place.item,
                        std::size_t(place.nameEnd - place.item)},
            &place);
    Places out(sizeOf(object) - begin);
    if(all.empty())
        return out;
    for(std::size_t i = 0; i != out.size(); ++i) {
        arrayRemoveSuffix(_spelling, _spelling.size());
        std::size_t lost;
        if(!writeValue(
               *itemOf(object, begin + i).name, _look, _spelling, lost, 0)
                .isEmpty())
            continue;
        const auto found = all.find({_spelling.data(), _spelling.size()});
        if(found == all.end())
            continue;
        out[i] = found->second;
        /* There may be another member of that name */
        all.erase(found);
    }
    return out;
}

/* In an array that got longer or shorter, those at the end that are the same
   have stayed the last */
Places Update::originsByOrder(const JsonValue& array, std::size_t begin,
    const std::vector<Place>& places) {
    Places out(sizeOf(array) - begin);
    const std::size_t most = std::min(out.size(), places.size());
    std::size_t same = 0;
    for(; out.size() != places.size() && same != most; ++same) {
        const Place& place = places[places.size() - 1 - same];
        _at = place.value;
        if(!compare(itemOf(array, sizeOf(array) - 1 - same).value))
            break;
        out[out.size() - 1 - same] = &place;
    }
    for(std::size_t i = 0; i != most - same; ++i)
        out[i] = &places[i];
    return out;
}

}

ProjectLook lookOf(Containers::StringView json) {
    const char* const begin = json.findOr('{', json.end()).begin();
    const char* const end = json.findLastOr('}', json.end()).end();
    const Containers::StringView root{begin, std::size_t(end - begin)};
    ProjectLook look;
    look.before = json.prefix(root.begin());
    look.after = json.suffix(root.end());
    findLines(look, json, root);
    Search{look}.run(beginOf(root));
    findEscapes(look, root);
    return look;
}

bool updateProject(Containers::StringView text, const JsonValue& document,
    const ProjectLook& look, Containers::Array<char>& out, std::size_t& lost,
    unsigned int maxDepth) {
    if(!document.IsObject())
        return false;
    ProjectLook inner = look;
    inner.before = inner.after = {};
    Update update{text.suffix(text.findOr('{', text.end()).begin()), inner, out,
        maxDepth};
    append(out, look.before);
    const bool isWritten = update.write(document, look.lineEnd);
    append(out, look.after);
    lost = update.lost();
    return isWritten;
}

}
