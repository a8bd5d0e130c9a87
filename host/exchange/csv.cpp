#include "csv.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

namespace OrrelinEngine { namespace Host {

namespace {

constexpr std::size_t MaxColumns = 1000;

const char* const KeyColumn = "key";
const char* const ObjectColumn = "object";
const char* const PlaceColumn = "place";
const char* const NoteColumn = "note";
const char* const MarksColumn = "handed-out";

/* Whether a spreadsheet may run it, perhaps once apostrophes are taken away */
bool isFormula(std::string_view text) {
    const std::size_t begin = text.find_first_not_of('\'');
    if(begin == text.npos)
        return false;
    switch(text[begin]) {
    case '=':
    case '+':
    case '-':
    case '@':
    case '\t':
    case '\r':
    case '\n':
        return true;
    case '\xef':
        text = text.substr(begin, 3);
        return text == "＝" || text == "＋" || text == "－" || text == "＠";
    }
    return false;
}

/* Spreadsheets in some languages separate with semicolons */
bool needsQuotes(std::string_view text) {
    if(text.empty())
        return false;
    bool out = text.front() == ' ' || text.back() == ' ';
    for(const char c: text)
        out = out | (c == ',') | (c == ';') | (c == '"') | (c == '\t') |
            (c == '\n') | (c == '\r');
    return out;
}

class Writer {
public:
    explicit Writer(std::string& out): _out(out) {}

    void add(Containers::StringView cell) {
        if(_isInRow)
            _out += ',';
        _isInRow = true;
        const std::string_view text{cell.data(), cell.size()};
        const bool isQuoted = needsQuotes(text);
        if(isQuoted)
            _out += '"';
        if(isFormula(text))
            _out += '\'';
        const std::size_t begin = _out.size();
        _out += text;
        if(!isQuoted)
            return;
        for(std::size_t i = begin; (i = _out.find('"', i)) != std::string::npos;
            i += 2)
            _out.insert(i, 1, '"');
        _out += '"';
    }

    void endRow() {
        _out += "\r\n";
        _isInRow = false;
    }

private:
    std::string& _out;
    bool _isInRow = false;
};

void writeNote(
    std::string& out, const ExchangeTable& table, std::size_t index) {
    for(const ExchangeLanguage& language: table.languages) {
        const ExchangeTarget& target = language.targets[index];
        if(target.state != TargetState::NeedsReview)
            continue;
        if(!out.empty())
            out += '\n';
        out.append(language.code.data(), language.code.size()) += ": ";
        appendNote(out, target);
    }
}

void writeMarks(
    std::string& out, const ExchangeTable& table, std::size_t index) {
    const ExchangeText& text = table.texts[index];
    const Marks marks{text.key};
    marks.append(out, table.sourceCode, text.source);
    for(const ExchangeLanguage& language: table.languages) {
        const Containers::StringView target = language.targets[index].text;
        if(target.isEmpty())
            continue;
        out += ' ';
        marks.append(out, language.code, target);
    }
}

}

void writeCsv(std::string& out, const ExchangeTable& table,
    const std::function<void()>& afterEach) {
    out += "\xef\xbb\xbf";
    Writer writer{out};
    for(const char* const name:
        {KeyColumn, ObjectColumn, PlaceColumn, NoteColumn})
        writer.add(name);
    writer.add(table.sourceCode);
    for(const ExchangeLanguage& language: table.languages)
        writer.add(language.code);
    writer.add(MarksColumn);
    writer.endRow();

    std::string cell;
    for(std::size_t i = 0; i != table.texts.size(); ++i) {
        const ExchangeText& text = table.texts[i];
        writer.add(text.key);
        writer.add(text.object);
        writer.add(text.place);
        cell.clear();
        writeNote(cell, table, i);
        writer.add(cell);
        writer.add(text.source);
        for(const ExchangeLanguage& language: table.languages)
            writer.add(language.targets[i].text);
        cell.clear();
        writeMarks(cell, table, i);
        writer.add(cell);
        writer.endRow();
        afterEach();
    }
}

namespace {

/* Takes rows off the content */
class Reader {
public:
    explicit Reader(Containers::StringView content):
        _at{content.begin()}, _end{content.end()} {
        /* The first row has names, without any of these characters */
        const char* const separator = std::find_if(_at, _end, [](char c) {
            return c == ',' || c == ';' || c == '\t' || c == '\n';
        });
        if(separator != _end && *separator != '\n')
            _separator = *separator;
    }

    /* False at the end of the content and for a fault */
    bool next(std::vector<std::string>& row) {
        _line = _nextLine;
        std::size_t count = 0;
        bool isRow = _at != _end;
        for(bool isMore = isRow; isMore; ++count) {
            if(count == row.size())
                row.emplace_back();
            row[count].clear();
            if(!readCell(row[count]))
                return false;
            isMore = _at != _end && *_at == _separator;
            if(isMore)
                ++_at;
        }
        row.resize(count);
        endRow();
        return isRow;
    }

    /* In which the row begins */
    std::size_t line() const { return _line; }

    const Containers::String& fault() const { return _fault; }

private:
    bool isCellEnd() const {
        return _at == _end || *_at == _separator || *_at == '\r' ||
            *_at == '\n';
    }

    bool readCell(std::string& out) {
        if(_at != _end && *_at == '"' && !readQuoted(out))
            return false;
        const char* const begin = _at;
        while(!isCellEnd())
            ++_at;
        out.append(begin, _at);
        if(!out.empty() && out[0] == '\'' && isFormula(out))
            out.erase(0, 1);
        return true;
    }

    bool readQuoted(std::string& out) {
        const std::size_t line = _nextLine;
        for(;;) {
            const char* const begin = ++_at;
            _at = std::find(_at, _end, '"');
            out.append(begin, _at);
            _nextLine += std::size_t(std::count(begin, _at, '\n'));
            if(_at == _end) {
                _fault = Utility::format(
                    "the quotation mark at line {} isn't closed", line);
                return false;
            }
            if(++_at == _end || *_at != '"')
                break;
            out += '"';
        }
        if(isCellEnd())
            return true;
        _fault = Utility::format(
            "text behind a closing quotation mark at line {}", _nextLine);
        return false;
    }

    void endRow() {
        if(_at != _end && *_at == '\r')
            ++_at;
        else if(_at == _end || *_at != '\n')
            return;
        if(_at != _end && *_at == '\n')
            ++_at;
        ++_nextLine;
    }

    const char* _at;
    const char* _end;
    char _separator = ',';
    std::size_t _line = 1;
    std::size_t _nextLine = 1;
    Containers::String _fault;
};

bool isEmpty(const std::vector<std::string>& row) {
    return std::all_of(row.begin(), row.end(),
        [](const std::string& cell) { return cell.empty(); });
}

}

Containers::String readCsv(Containers::StringView content,
    Containers::StringView sourceCode, ExchangeTable& out) {
    Reader reader{withoutByteOrderMark(content)};
    std::vector<std::string> names;
    if(!reader.next(names) && !reader.fault().isEmpty())
        return reader.fault();
    /* Each row takes time and memory for all of them */
    if(names.size() > MaxColumns)
        return Utility::format(
            "the first row names {} columns, but {} are the most", names.size(),
            MaxColumns);
    std::map<std::string_view, std::size_t> columns;
    for(std::size_t i = 0; i != names.size(); ++i)
        if(!names[i].empty() && !columns.emplace(names[i], i).second)
            return Utility::format(
                "two columns are named '{}'", Containers::StringView{names[i]});
    const auto find = [&](Containers::StringView name) {
        const auto found = columns.find({name.data(), name.size()});
        return found == columns.end() ? names.size() : found->second;
    };
    for(const Containers::StringView name:
        {Containers::StringView{KeyColumn}, sourceCode})
        if(find(name) == names.size())
            return Utility::format(
                "the first row doesn't name a column '{}'", name);
    const std::size_t key = find(KeyColumn);
    const std::size_t source = find(sourceCode);
    const std::size_t marks = find(MarksColumn);

    out.sourceCode = sourceCode;
    for(const char* const name:
        {KeyColumn, ObjectColumn, PlaceColumn, NoteColumn, MarksColumn})
        columns.erase(name);
    std::vector<std::size_t> languages;
    for(std::size_t i = 0; i != names.size(); ++i)
        if(i != source && columns.count(names[i])) {
            languages.push_back(i);
            out.languages.push_back({Containers::String{names[i]}, {}});
        }

    std::vector<std::string> row;
    while(reader.next(row)) {
        if(isEmpty(row))
            continue;
        if(row.size() > names.size() &&
            !isEmpty({row.begin() + std::ptrdiff_t(names.size()), row.end()}))
            return Utility::format("the row at line {} has {} cells, but there "
                                   "are {} columns",
                reader.line(), row.size(), names.size());
        /* Spreadsheets may leave out empty cells at the end */
        row.resize(names.size() + 1);
        ExchangeText text;
        text.key = Containers::String{row[key]};
        text.source = Containers::String{row[source]};
        text.marks = Containers::String{row[marks]};
        text.line = reader.line();
        out.texts.push_back(std::move(text));
        for(std::size_t i = 0; i != languages.size(); ++i)
            out.languages[i].targets.push_back(
                {Containers::String{row[languages[i]]}, TargetState::Unknown,
                    {}});
    }
    return reader.fault();
}

}}
