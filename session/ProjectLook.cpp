#include "session/ProjectLook.h"

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

}
