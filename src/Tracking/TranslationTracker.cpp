#include "Tracking/TranslationTracker.h"

#include <algorithm>
#include <set>
#include <utility>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/Path.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/collectLanguageFiles.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "Tracking/Implementation/hashes.h"
#include "Tracking/Implementation/languageSources.h"
#include "Tracking/Implementation/recordTexts.h"
#include "editor/OrrelinEditor.h"
#include "shared/RecordPath.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace Tracking {

namespace {

typedef std::set<Containers::String, StrLess> Codes;
typedef std::map<Containers::String, Containers::String, StrLess> SourceTexts;

Containers::StringView defaultLanguage(const OrrelinEditor& editor) {
    return editor.project["settings/localization/defaultLanguage"].asString();
}

bool hasLanguage(OrrelinEditor& editor, Containers::StringView code) {
    return editor.languagesSection[RecordPath::segment(code)].hasValue();
}

/* Counts the values of a file that aren't taken */
class Leftovers {
public:
    void add(Containers::StringView key) {
        if(!_count++)
            _first = key;
    }

    void print(Containers::StringView file) const {
        if(_count)
            Utility::Warning{} << "TranslationTracker::load():" << _count
                               << "values aren't taken from" << file
                               << Utility::Debug::nospace << ", the first for"
                               << _first;
    }

private:
    std::size_t _count = 0;
    Containers::String _first;
};

}

struct TranslationTracker::State {
    std::uint32_t origin(Containers::StringView code, const Term& term,
        Containers::StringView translation) const {
        const auto language = origins.find(code);
        if(language != origins.end()) {
            const auto found =
                language->second.find(translationHash(term.key, translation));
            if(found != language->second.end())
                return found->second;
        }
        return record.origin(code, term.key, translation, term.source);
    }

    void setOrigin(Containers::StringView code, Containers::StringView key,
        Containers::StringView translation, std::uint32_t origin) {
        origins[Containers::String{code}][translationHash(key, translation)] =
            origin;
    }

    Containers::StringView formerSource(
        Containers::StringView key, std::uint32_t origin) const {
        const auto found = sources.find(key);
        return found != sources.end() &&
                TranslationRecord::originOf(found->second) == origin
            ? Containers::StringView{found->second}
            : record.formerSource(origin);
    }

    /* Translations may have been made from the texts before */
    void keepSources(const std::vector<Term>& terms) {
        const SourceTexts before = std::exchange(sources, {});
        for(const Term& term: terms) {
            if(!term.isTranslated)
                continue;
            const auto found = before.find(term.key);
            if(found != before.end() && found->second != term.source)
                record.addFormerSource(found->second);
            sources.emplace_hint(sources.end(), term.key, term.source);
        }
    }

    TranslationRecord record;
    bool isRead = false;
    std::vector<SourceDifference> differences;
    /* By language and hash of key and translation, what those were made from
       that aren't on record or have another key there */
    std::map<Containers::String,
        std::unordered_map<std::uint64_t, std::uint32_t>, StrLess>
        origins;
    /* The project's texts when they were last loaded or saved */
    SourceTexts sources;
};

namespace {

/* Whether there's no record or it could be read */
bool readRecord(const OrrelinEditor& editor, TranslationRecord& record) {
    for(const Containers::String& file: recordFiles(editor)) {
        if(!Utility::Path::exists(file))
            continue;
        const auto content = Utility::Path::readString(file);
        if(!content || !record.parse(*content)) {
            Utility::Error{} << "TranslationTracker::load():" << file
                             << "isn't a record that can be read";
            return false;
        }
        record.expectSources(defaultLanguage(editor));
        break;
    }
    return true;
}

/* Finds a term that is to be translated. The views are of the tables and the
   document. */
bool findTerm(OrrelinEditor& editor, Containers::StringView key, Term& out) {
    if(!LocalizationTools::termExists(editor, key))
        return false;
    const auto found = editor.localization->terms.find(key);
    const JsonValue* const value =
        editor.project[found->second].readValueNoDefault();
    out = {found->first, found->second,
        value ? stringOf(*value) : Containers::StringView{}, true};
    return true;
}

/* Reads the files of a source, and whether that succeeded */
bool collect(
    const LanguageSource& source, LocalizationTools::LanguageFiles& files) {
    return !Utility::Path::exists(source.path) ||
        (source.isArchive
                ? LocalizationTools::collectArchive(source.path, files)
                : LocalizationTools::collectFolder(source.path, files));
}

}

/* Loads the files of all sources */
class TranslationTracker::Loader {
public:
    explicit Loader(OrrelinEditor& editor, State& state):
        _editor(editor),
        _state(state), _terms{listTerms(editor)}, _texts{editor, _terms,
                                                      state.record},
        _defaultLanguage{defaultLanguage(editor)} {}

    bool load() {
        bool succeeded = true;
        const std::vector<LanguageSource> sources =
            languageSources(_editor, _state.record);
        for(const LanguageSource& source: sources)
            if(!load(source, &source == &sources.front()))
                succeeded = false;
        _state.record.renew();
        _state.keepSources(_terms);
        for(const SourceDifference& difference: _state.differences)
            _state.record.addFormerSource(difference.inFile);
        return succeeded;
    }

private:
    bool load(const LanguageSource& source, bool isFirst) {
        LocalizationTools::LanguageFiles files;
        bool succeeded = collect(source, files);
        Codes found;
        for(std::size_t i = 0; i != files.contents.size(); ++i) {
            const Containers::StringView name = files.names.get(i);
            const Containers::String code = name.exceptSuffix(".json");
            found.insert(code);
            /* From further places, only what the first one lacks */
            if(_found.count(code))
                continue;
            if(hasLanguage(_editor, code))
                succeeded &= load(code, name, files.contents[i]);
            else if(isFirst)
                Utility::Warning{} << "TranslationTracker::load(): the project "
                                      "doesn't have the language of"
                                   << name;
        }
        if(!source.isArchive && !checkAll(source.path, found))
            succeeded = false;
        _found.insert(found.begin(), found.end());
        return succeeded;
    }

    /* Loose files that can't be read were passed over */
    bool checkAll(Containers::StringView folder, const Codes& found) {
        bool succeeded = true;
        for(const Containers::StringView key: _editor.languagesSection.keys()) {
            const Containers::String code = RecordPath::name(key);
            const Containers::String file =
                Utility::Path::join(folder, code + ".json");
            if(_found.count(code) || found.count(code) ||
                !Utility::Path::exists(file))
                continue;
            Utility::Error{} << "TranslationTracker::load(): can't read"
                             << file;
            succeeded = false;
        }
        return succeeded;
    }

    bool load(const Containers::String& code, Containers::StringView name,
        Containers::ArrayView<char> content) {
        const Containers::Optional<Utility::Json> json =
            LocalizationTools::parseLanguageFile(content);
        const Utility::JsonIterator texts = json
            ? LocalizationTools::translationOf(*json)
            : Utility::JsonIterator{};
        if(!texts) {
            Utility::Error{} << "TranslationTracker::load():" << name
                             << "isn't a language file";
            return false;
        }
        Leftovers leftovers;
        if(code == _defaultLanguage)
            compare(code, texts, leftovers);
        else
            fill(code, texts, leftovers);
        leftovers.print(name);
        return true;
    }

    void compare(const Containers::String& code,
        const Utility::JsonIterator& texts, Leftovers& leftovers) {
        _texts.forEach(code, texts, false, [&](const LanguageText& text) {
            if(text.kind == TextKind::Missing)
                return;
            if(text.kind != TextKind::Text ||
                !addDifference(_texts, text, _state.differences))
                leftovers.add(text.key);
        });
    }

    void fill(const Containers::String& code,
        const Utility::JsonIterator& texts, Leftovers& leftovers) {
        TranslationMap& translations = _editor.localization->translations[code];
        translations.clear();
        _state.record.beginTranslations(code);
        _texts.forEach(code, texts, false, [&](const LanguageText& text) {
            recordAsRead(_state.record, code, false, text);
            const bool isText = text.kind == TextKind::Text;
            if(!isText &&
                (text.text.data() || text.kind == TextKind::WrongType))
                leftovers.add(text.key);
            if(text.term == TextMoves::None)
                return;
            const Containers::StringView key = _terms[text.term].key;
            if(isText && text.isMoved)
                _state.setOrigin(code, key, text.text, text.origin);
            /* The last one of a key counts, as in an import */
            auto& translation =
                translations
                    .emplace_hint(translations.end(), key, Containers::NullOpt)
                    ->second;
            if(isText)
                translation = Containers::String{text.text};
            else
                translation = Containers::NullOpt;
        });
    }

    OrrelinEditor& _editor;
    State& _state;
    std::vector<Term> _terms;
    LanguageTexts _texts;
    Containers::String _defaultLanguage;
    Codes _found;
};

TranslationTracker::TranslationTracker(OrrelinEditor& editor):
    _editor(editor), _state{std::make_unique<State>()} {}

TranslationTracker::~TranslationTracker() = default;

bool TranslationTracker::load() {
    _state = std::make_unique<State>();
    _state->isRead = readRecord(_editor, _state->record);
    return _state->isRead && Loader{_editor, *_state}.load();
}

const std::vector<SourceDifference>& TranslationTracker::differences() const {
    return _state->differences;
}

std::vector<OutdatedTranslation> TranslationTracker::outdated(
    Containers::StringView code) const {
    std::vector<OutdatedTranslation> out;
    const LanguageTranslations& all = _editor.localization->translations;
    const auto translations = all.find(Containers::String{code});
    if(translations == all.end() || code == defaultLanguage(_editor))
        return out;
    forEachTranslation(listTerms(_editor), translations->second,
        [&](const Term& term, Containers::StringView translation) {
            if(!translation.data())
                return;
            const std::uint32_t origin =
                _state->origin(code, term, translation);
            if(origin != TranslationRecord::originOf(term.source))
                out.push_back({term.key, translation, term.source,
                    _state->formerSource(term.key, origin)});
        });
    return out;
}

bool TranslationTracker::confirm(
    Containers::StringView code, Containers::StringView key) {
    Term term;
    const LanguageTranslations& all = _editor.localization->translations;
    const auto translations = all.find(Containers::String{code});
    if(translations == all.end() || !findTerm(_editor, key, term))
        return false;
    const auto found = translations->second.find(key);
    if(found == translations->second.end() || !found->second)
        return false;
    _state->setOrigin(
        code, key, *found->second, TranslationRecord::originOf(term.source));
    return true;
}

void TranslationTracker::renameTerm(Containers::StringView oldKey,
    Containers::StringView newKey, TermMap& strings) {
    /* Either may be a view of a key that's about to be erased */
    const Containers::String from{oldKey}, to{newKey};
    Term term;
    if(findTerm(_editor, from, term))
        for(const auto& language: _editor.localization->translations) {
            const auto found = language.second.find(from);
            if(found != language.second.end() && found->second &&
                !language.second.count(to))
                _state->setOrigin(language.first, to, *found->second,
                    _state->origin(language.first, term, *found->second));
        }
    const auto source = _state->sources.find(from);
    if(source != _state->sources.end())
        _state->sources.emplace(to, source->second);
    LocalizationTools::renameTerm(_editor, from, to, strings);
}

bool TranslationTracker::save(const Containers::StringIterable& codes) {
    if(!_state->isRead) {
        Utility::Error{} << "TranslationTracker::save(): nothing was loaded";
        return false;
    }
    const std::vector<Term> terms = listTerms(_editor);
    TranslationRecord& record = _state->record;
    for(const Containers::StringView code: codes)
        recordExport(record, _editor, code, terms,
            [&](const Term& term, Containers::StringView translation) {
                return _state->origin(code, term, translation);
            });
    record.renew();
    for(const Containers::StringView code: codes)
        _state->origins.erase(Containers::String{code});
    _state->keepSources(terms);
    recordTarget(record, _editor);
    const Containers::String content = record.write();
    return Utility::Path::write(recordFiles(_editor).front(), content);
}

}}
