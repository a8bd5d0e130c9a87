#include "Tracking/TranslationRecord.h"

#include <algorithm>
#include <string>
#include <utility>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringStl.h>

#include "Tracking/Implementation/RecordState.h"
#include "Tracking/Implementation/hashes.h"

namespace OrrelinEngine { namespace Tracking {

namespace {

using namespace Containers::Literals;

constexpr Containers::StringView Title = "translation record 1"_s;
constexpr const char Help[] =
    "# Which source text each translation was made from, as hashes. Belongs to\n"
    "# the language files in version control. After a merge, keep both sides.\n";
constexpr const char Digits[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr std::size_t LongDigits = HashBits / 6;
constexpr std::size_t ShortDigits = ShortHashBits / 6;

void appendHash(std::string& out, std::uint64_t hash, std::size_t digits) {
    for(std::size_t i = digits; i-- != 0;)
        out += Digits[hash >> 6 * i & 63];
}

struct DigitValues {
    std::int16_t values[256];

    explicit DigitValues() {
        for(std::int16_t& value: values)
            value = -1;
        for(int i = 0; i != 64; ++i)
            values[static_cast<unsigned char>(Digits[i])] = std::int16_t(i);
    }
};

/* Whether all are digits */
bool parseHash(Containers::StringView digits, std::uint64_t& out) {
    static const DigitValues known;
    out = 0;
    for(const char digit: digits) {
        const int value = known.values[static_cast<unsigned char>(digit)];
        if(value < 0)
            return false;
        out = out << 6 | std::uint64_t(value);
    }
    return true;
}

void append(std::string& out, Containers::StringView text) {
    out.append(text.data(), text.size());
}

/* A name from a stranger's project could pretend to be other lines */
bool isOneLine(Containers::StringView name) {
    return !name.contains('\n') && !name.contains('\r');
}

void appendSources(std::string& out, const Sources& sources) {
    if(sources.entries.isEmpty() || !isOneLine(sources.code))
        return;
    append(out, "[sources "_s + sources.code + "]\n"_s);
    for(const SourceEntry& entry: sources.entries) {
        appendHash(out, entry.key, LongDigits);
        appendHash(out, entry.text, LongDigits);
        out += '\n';
    }
}

void appendTranslations(std::string& out, Containers::StringView code,
    const Translations& translations) {
    if(!isOneLine(code))
        return;
    append(out, "["_s + code + "]\n"_s);
    for(const TranslationEntry& entry: translations) {
        appendHash(out, entry.id(), LongDigits);
        if(entry.source())
            appendHash(out, entry.source(), ShortDigits);
        out += '\n';
    }
}

void appendFormerSource(
    std::string& out, std::uint32_t hash, Containers::StringView text) {
    rapidjson::StringBuffer json;
    rapidjson::Writer<rapidjson::StringBuffer> writer{json};
    writer.String(text.data(), rapidjson::SizeType(text.size()));
    appendHash(out, hash, ShortDigits);
    out += ' ';
    out.append(json.GetString(), json.GetSize());
    out += '\n';
}

void appendAccepted(std::string& out, Containers::StringView code,
    const std::set<AcceptedEntry>& all) {
    if(all.empty() || !isOneLine(code))
        return;
    append(out, "[accepted "_s + code + "]\n"_s);
    for(const AcceptedEntry& entry: all) {
        appendHash(out, entry.translation, LongDigits);
        appendHash(out, entry.source, ShortDigits);
        append(out, " "_s + entry.rule + "\n"_s);
    }
}

bool isRuleName(Containers::StringView name) {
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || c == '-';
    });
}

/* Reads lines into the section that the last header named */
class RecordParser {
public:
    explicit RecordParser(Sources& sources, LanguageRecords& languages,
        std::map<std::uint32_t, Containers::String>& formerSources,
        AcceptedEntries& accepted, Containers::String& archive):
        _sources(sources),
        _languages(languages), _formerSources(formerSources),
        _accepted(accepted), _archive(archive) {}

    void add(Containers::StringView line) {
        if(line.hasPrefix('[') && line.hasSuffix(']'))
            beginSection(line.slice(1, line.size() - 1));
        else if(line.hasPrefix("archive "_s))
            _archive = line.exceptPrefix("archive "_s);
        else
            addEntry(line);
    }

private:
    enum class Section { None, Sources, Translations, FormerSources, Accepted };

    void beginSection(Containers::StringView name) {
        if(name.hasPrefix("sources "_s)) {
            _section = Section::Sources;
            _sources.code = name.exceptPrefix("sources "_s);
        } else if(name == "former sources") {
            _section = Section::FormerSources;
        } else if(name.hasPrefix("accepted "_s)) {
            _section = Section::Accepted;
            _acceptedOfLanguage = &_accepted[Containers::String{
                name.exceptPrefix("accepted "_s)}];
        } else {
            _section = Section::Translations;
            _translations = &_languages[Containers::String{name}];
        }
    }

    void addEntry(Containers::StringView line) {
        if(_section == Section::Sources)
            addSource(line);
        else if(_section == Section::Translations)
            addTranslation(line);
        else if(_section == Section::FormerSources)
            addFormerSource(line);
        else if(_section == Section::Accepted)
            addAccepted(line);
    }

    void addSource(Containers::StringView line) {
        std::uint64_t key, text;
        if(line.size() == 2 * LongDigits &&
            parseHash(line.prefix(LongDigits), key) &&
            parseHash(line.exceptPrefix(LongDigits), text))
            _sources.entries.add({key, text});
    }

    void addTranslation(Containers::StringView line) {
        std::uint64_t translation, source;
        if((line.size() == LongDigits ||
               line.size() == LongDigits + ShortDigits) &&
            parseHash(line.prefix(LongDigits), translation) &&
            parseHash(line.exceptPrefix(LongDigits), source))
            _translations->add(
                TranslationEntry{translation, std::uint32_t(source)});
    }

    void addAccepted(Containers::StringView line) {
        std::uint64_t translation, source;
        constexpr std::size_t Begin = LongDigits + ShortDigits;
        if(line.size() > Begin && line[Begin] == ' ' &&
            parseHash(line.prefix(std::size_t(LongDigits)), translation) &&
            parseHash(line.slice(LongDigits, Begin), source) &&
            isRuleName(line.exceptPrefix(Begin + 1)))
            _acceptedOfLanguage->insert({translation, std::uint32_t(source),
                line.exceptPrefix(Begin + 1)});
    }

    void addFormerSource(Containers::StringView line) {
        std::uint64_t hash;
        if(line.size() <= ShortDigits + 1 || line[ShortDigits] != ' ' ||
            !parseHash(line.prefix(ShortDigits), hash))
            return;
        const Containers::StringView json = line.exceptPrefix(ShortDigits + 1);
        rapidjson::Document text;
        text.Parse<rapidjson::kParseValidateEncodingFlag>(
            json.data(), json.size());
        /* Somebody may have edited it */
        if(!text.HasParseError() && text.IsString()) {
            const Containers::StringView known{
                text.GetString(), text.GetStringLength()};
            if(shortTextHash(known) == hash)
                _formerSources.emplace(std::uint32_t(hash), known);
        }
    }

    Sources& _sources;
    LanguageRecords& _languages;
    std::map<std::uint32_t, Containers::String>& _formerSources;
    AcceptedEntries& _accepted;
    Containers::String& _archive;
    Section _section = Section::None;
    Translations* _translations = nullptr;
    std::set<AcceptedEntry>* _acceptedOfLanguage = nullptr;
};

/* The next line, without its end and without the carriage return that some
   version control systems add. Takes it off the content. */
Containers::StringView takeLine(Containers::StringView& content) {
    const Containers::StringView line =
        content.prefix(content.findOr('\n', content.end()).begin());
    content = content.suffix(line.end());
    if(!content.isEmpty())
        content = content.exceptPrefix(1);
    return line.hasSuffix('\r') ? line.exceptSuffix(1) : line;
}

}

const char TranslationRecord::FileName[] = "translation-record.txt";

TranslationRecord::TranslationRecord(): _state{std::make_unique<State>()} {}

TranslationRecord::TranslationRecord(TranslationRecord&&) noexcept = default;

TranslationRecord::~TranslationRecord() = default;

TranslationRecord& TranslationRecord::operator=(
    TranslationRecord&&) noexcept = default;

bool TranslationRecord::parse(Containers::StringView content) {
    _state = std::make_unique<State>();
    /* After a merge, marks of a conflict may stand before the title */
    bool isRecord = false;
    RecordParser parser{_state->sources, _state->languages,
        _state->formerSources, _state->accepted, _state->archive};
    while(!content.isEmpty()) {
        const Containers::StringView line = takeLine(content);
        if(line == Title)
            isRecord = true;
        else if(isRecord)
            parser.add(line);
        else if(line.hasPrefix("translation record "_s))
            return false;
    }
    return isRecord;
}

Containers::String TranslationRecord::write() const {
    const State& state = *_state;
    std::string out;
    append(out, Title);
    out += '\n';
    out += Help;
    if(!state.archive.isEmpty() && isOneLine(state.archive))
        append(out, "archive "_s + state.archive + "\n"_s);
    appendSources(out, state.newSources ? *state.newSources : state.sources);

    std::map<std::uint32_t, bool> isNeeded;
    for(const auto& former: state.formerSources)
        isNeeded[former.first] = false;
    LanguageRecords none;
    const auto add = [&](Containers::StringView code,
                         const Translations& translations) {
        appendTranslations(out, code, translations);
        if(isNeeded.empty())
            return;
        for(const TranslationEntry& entry: translations) {
            const auto found = isNeeded.find(entry.source());
            if(found != isNeeded.end())
                found->second = true;
        }
    };
    /* Both are in the order of their codes, and so is the result */
    auto renewed = state.newLanguages.begin();
    const auto end = state.newLanguages.end();
    for(const auto& language: state.languages) {
        for(; renewed != end && StrLess{}(renewed->first, language.first);
            ++renewed)
            add(renewed->first, renewed->second);
        if(renewed != end && renewed->first == language.first) {
            add(renewed->first, renewed->second);
            ++renewed;
        } else
            add(language.first, language.second);
    }
    for(; renewed != end; ++renewed)
        add(renewed->first, renewed->second);

    for(const auto& language: state.accepted)
        appendAccepted(out, language.first, language.second);

    bool isFirst = true;
    for(const auto& former: state.formerSources)
        if(isNeeded[former.first]) {
            if(std::exchange(isFirst, false))
                out += "[former sources]\n";
            appendFormerSource(out, former.first, former.second);
        }
    return Containers::String{out.data(), out.size()};
}

void TranslationRecord::expectSources(Containers::StringView code) {
    if(_state->sources.code != code)
        _state->sources = {};
}

bool TranslationRecord::isEmpty() const {
    return _state->sources.entries.isEmpty() && _state->languages.empty();
}

Containers::StringView TranslationRecord::archive() const {
    return _state->archive;
}

void TranslationRecord::setArchive(Containers::StringView name) {
    _state->archive = name;
}

SourceState TranslationRecord::compare(Containers::StringView key,
    Containers::StringView file, Containers::StringView project) const {
    if(file == project)
        return SourceState::Same;
    const RecordEntries<SourceEntry>& entries = _state->sources.entries;
    const std::uint64_t id = textHash(key);
    /* After a merge, both may be known */
    const bool isFileKnown = entries.contains({id, textHash(file)});
    const bool isProjectKnown = entries.contains({id, textHash(project)});
    if(isFileKnown == isProjectKnown)
        return SourceState::Conflict;
    if(isFileKnown)
        return SourceState::ChangedInProject;
    return formerSource(shortTextHash(file)) == file
        ? SourceState::Conflict
        : SourceState::ChangedInFile;
}

void TranslationRecord::assumeSource(
    Containers::StringView key, Containers::StringView text) {
    _state->assumedSources.add({textHash(key), textHash(text)});
}

bool TranslationRecord::hasSources() const {
    return !_state->sources.entries.isEmpty();
}

bool TranslationRecord::hasSource(Containers::StringView key) const {
    return _state->known().find(textHash(key));
}

std::uint32_t TranslationRecord::originOf(Containers::StringView source) {
    return shortTextHash(source);
}

std::uint32_t TranslationRecord::origin(Containers::StringView code,
    Containers::StringView key, Containers::StringView translation,
    Containers::StringView source) const {
    const std::uint32_t known = knownOrigin(code, key, translation, source);
    return known ? known : originOfNew(key, source);
}

std::uint32_t TranslationRecord::knownOrigin(Containers::StringView code,
    Containers::StringView key, Containers::StringView translation,
    Containers::StringView source) const {
    const auto language = _state->languages.find(code);
    if(language == _state->languages.end())
        return 0;
    /* After a merge there may be several. The one that makes the translation up
       to date was added by whoever saw to that. */
    const std::uint64_t id = translationHash(key, translation);
    const std::uint32_t current = originOf(source);
    if(language->second.contains(TranslationEntry{id, current}))
        return current;
    const TranslationEntry* const known = language->second.find(id);
    return known ? known->source() : 0;
}

std::uint32_t TranslationRecord::originOfNew(
    Containers::StringView key, Containers::StringView source) const {
    const std::uint64_t keyId = textHash(key);
    const std::uint64_t sourceHash = textHash(source);
    const RecordEntries<SourceEntry>& sources = _state->known();
    if(sources.contains({keyId, sourceHash}))
        return shortHash(sourceHash);
    const SourceEntry* const base = sources.find(keyId);
    return shortHash(base ? base->text : sourceHash);
}

bool TranslationRecord::hasTranslation(Containers::StringView code,
    Containers::StringView key, Containers::StringView translation) const {
    const auto language = _state->languages.find(code);
    if(language == _state->languages.end())
        return false;
    const TranslationEntry* const known =
        language->second.find(translationHash(key, translation));
    return known && known->source();
}

Containers::StringView TranslationRecord::formerSource(
    std::uint32_t origin) const {
    const auto found = _state->formerSources.find(origin);
    if(found == _state->formerSources.end())
        return {};
    return found->second;
}

void TranslationRecord::addFormerSource(Containers::StringView text) {
    _state->formerSources.emplace(shortTextHash(text), text);
}

void TranslationRecord::beginSources(Containers::StringView code) {
    _state->newSources = Sources{};
    _state->newSources->code = code;
}

void TranslationRecord::addSource(
    Containers::StringView key, Containers::StringView text) {
    _state->newSources->entries.add({textHash(key), textHash(text)});
}

void TranslationRecord::keepSource(Containers::StringView key) {
    const SourceEntry* const known =
        _state->sources.entries.find(textHash(key));
    if(known)
        _state->newSources->entries.add(*known);
}

void TranslationRecord::keepSources() {
    _state->newSources = {};
}

void TranslationRecord::beginTranslations(Containers::StringView code) {
    _state->begun = &(_state->newLanguages[Containers::String{code}] = {});
}

void TranslationRecord::addTranslation(Containers::StringView key,
    Containers::StringView translation, std::uint32_t origin) {
    _state->begun->add(
        TranslationEntry{translationHash(key, translation), origin});
}

void TranslationRecord::addMissing(Containers::StringView key) {
    _state->begun->add(TranslationEntry{textHash(key), 0});
}

void TranslationRecord::renew() {
    if(_state->newSources)
        _state->sources = std::move(*_state->newSources);
    _state->newSources = {};
    for(auto& language: _state->newLanguages)
        _state->languages[language.first] = std::move(language.second);
    _state->newLanguages.clear();
    _state->begun = nullptr;
}

bool TranslationRecord::isAccepted(Containers::StringView code,
    Containers::StringView rule, Containers::StringView source,
    Containers::StringView translation) const {
    const auto language = _state->accepted.find(code);
    return language != _state->accepted.end() &&
        language->second.count(
            {textHash(translation), shortTextHash(source), rule});
}

void TranslationRecord::accept(Containers::StringView code,
    Containers::StringView rule, Containers::StringView source,
    Containers::StringView translation) {
    _state->accepted[Containers::String{code}].insert(
        {textHash(translation), shortTextHash(source), rule});
}

void TranslationRecord::withdraw(Containers::StringView code,
    Containers::StringView rule, Containers::StringView source,
    Containers::StringView translation) {
    const auto language = _state->accepted.find(code);
    if(language != _state->accepted.end())
        language->second.erase(
            {textHash(translation), shortTextHash(source), rule});
}

void TranslationRecord::remove(Containers::StringView code) {
    const auto accepted = _state->accepted.find(code);
    if(accepted != _state->accepted.end())
        _state->accepted.erase(accepted);
    for(LanguageRecords* const all:
        {&_state->languages, &_state->newLanguages}) {
        const auto found = all->find(code);
        if(found != all->end())
            all->erase(found);
    }
}

}}
