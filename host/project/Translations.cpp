#include "Translations.h"

#include <algorithm>
#include <set>
#include <utility>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Json.h>

#include "LanguageFileFaults.h"
#include "LanguageFiles.h"
#include "LanguageTable.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "Tools/languageIndex.h"
#include "terminal/Messages.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef Utility::JsonToken::Type Type;

bool contains(const Codes& codes, Containers::StringView code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/* Calls the function with the texts of a file. Prints values that are neither
   texts nor null. If the file isn't a language file, prints why and returns
   false. */
template<class F> bool withTexts(LanguageFile& file, F&& function) {
    const FaultTeller faults{file};
    const Containers::Optional<Utility::Json> json =
        LocalizationTools::parseLanguageFile(file.content);
    const Utility::JsonIterator texts = json
        ? LocalizationTools::translationOf(*json)
        : Utility::JsonIterator{};
    /* Tools write an empty object where nothing is translated */
    const bool isEmpty = json && json->root().type() == Type::Object &&
        !(json->root().asObject().begin() != json->root().asObject().end());
    if(!texts && !isEmpty) {
        faults.tell();
        return false;
    }
    if(isEmpty)
        return function(*json, texts);
    for(const Utility::JsonObjectItem text: texts->asObject())
        if(text.value().type() != Type::String &&
            text.value().type() != Type::Null) {
            faults.tellWrongTypes();
            break;
        }
    return function(*json, texts);
}

/* Fills the tables from files, and finds what they hold that new ones
   wouldn't */
class ReplacedFilesReader: public TextVisitor {
public:
    explicit ReplacedFilesReader(Project& project, const LanguageTexts& texts,
        Codes& codes, ReplacedFiles& out):
        _project(project),
        _texts(texts), _codes(codes),
        _out(out), _target{project.target()}, _takesAll{codes.empty()} {}

    bool isWanted(Containers::StringView code) override {
        /* Loose files of other languages stay. But with a new file of the
           default language, it has to be on record what they were made from. */
        return _takesAll || _target.isArchive || contains(_codes, code) ||
            contains(_codes, _project.defaultLanguage());
    }

    bool begin(const LanguageSource& source, const LanguageFile& file,
        const Utility::Json& json) override {
        if(_takesAll && isLanguage(_project, file.code))
            _codes.push_back(file.code);
        _file = file.path;
        _code = file.code;
        _isReplaced = contains(_codes, file.code);
        /* Files at another place stay there */
        _isLost =
            source.path == _target.path && (_isReplaced || _target.isArchive);
        dropMembers(json);
        if(!_isReplaced) {
            _project.record().beginTranslations(_code);
            return true;
        }
        _isDefault = file.code == _project.defaultLanguage();
        _translations = &_project.localization().translations[file.code];
        _next = _translations->begin();
        _origins = &_out.origins[file.code];
        _isSeen.assign(_texts.terms().size(), false);
        return true;
    }

    void add(const LanguageText& text) override {
        if(!_isReplaced) {
            if(text.text.data())
                drop(text.key);
            recordAsRead(_project.record(), _code, false, text);
            return;
        }
        const bool isEmptied =
            text.kind == TextKind::Empty || text.kind == TextKind::None;
        if(text.kind == TextKind::WrongType ||
            (text.term == Tracking::TextMoves::None && text.text.data()))
            drop(text.key);
        else if(isEmptied && !_isDefault)
            ++_out.losses.emptied;
        if(text.term == Tracking::TextMoves::None)
            return;
        /* A key may come twice */
        const bool isRepeated = _isSeen[text.term];
        _isSeen[text.term] = true;
        if(_isDefault) {
            if(isRepeated)
                drop(text.key);
            if((text.kind == TextKind::Text || isEmptied) &&
                !addDifference(_texts, text, _out.differences))
                drop(text.key);
        } else
            translate(text, isRepeated);
    }

private:
    void translate(const LanguageText& text, bool isRepeated) {
        const Containers::StringView key = _texts.terms()[text.term].key;
        const auto found = _next != _translations->end() && _next->first == key
            ? _next
            : _translations->emplace_hint(_next, key, Containers::NullOpt);
        _next = std::next(found);
        const bool isText = text.kind == TextKind::Text;
        if(isRepeated && found->second &&
            (!isText || *found->second != text.text))
            drop(text.key);
        found->second = isText
            ? Containers::Optional<Containers::String>{Containers::String{
                  text.text}}
            : Containers::NullOpt;
        if(text.isOutdated)
            (*_origins)[key] = text.origin;
    }

    void dropMembers(const Utility::Json& json) {
        /* Of two objects with texts, only the first is read */
        bool isFirst = true;
        for(const Utility::JsonObjectItem member: json.root().asObject())
            if(member.key() != "translation" || !std::exchange(isFirst, false))
                drop(member.key());
    }

    void drop(Containers::StringView key) {
        if(_isLost)
            _out.losses.drop(key, _file);
    }

    Project& _project;
    const LanguageTexts& _texts;
    Codes& _codes;
    ReplacedFiles& _out;
    LanguageSource _target;
    bool _takesAll;
    Containers::String _file, _code;
    bool _isReplaced = false, _isLost = false, _isDefault = false;
    TranslationMap* _translations = nullptr;
    TranslationMap::iterator _next;
    std::map<Containers::String, std::uint32_t, StrLess>* _origins = nullptr;
    std::vector<bool> _isSeen;
};

}

bool readTexts(Project& project, const LanguageTexts& texts, bool allowsEmpty,
    TextVisitor& visitor) {
    std::set<Containers::String, StrLess> found;
    bool succeeded = true;
    const std::vector<LanguageSource> sources = project.sources();
    for(const LanguageSource& source: sources) {
        const auto isWanted = [&](Containers::StringView name) {
            const Containers::StringView code = name.exceptSuffix(".json");
            /* In further places, only what the first one lacks */
            return !found.count(code) && visitor.isWanted(code) &&
                (&source == &sources.front() || project.hasLanguage(code));
        };
        Codes read;
        if(!forEachLanguageFile(
               project, source, isWanted, [&](LanguageFile& file) {
                   read.push_back(file.code);
                   return withTexts(file,
                       [&](const Utility::Json& json,
                           const Utility::JsonIterator& translation) {
                           if(!visitor.begin(source, file, json))
                               return false;
                           if(translation)
                               texts.forEach(file.code, translation,
                                   allowsEmpty, [&](const LanguageText& text) {
                                       visitor.add(text);
                                   });
                           visitor.end();
                           return true;
                       });
               }))
            succeeded = false;
        found.insert(read.begin(), read.end());
    }
    const Containers::String unread = project.unreadFile();
    if(!unread.isEmpty())
        fail(Utility::format("{} isn't read, as the files were last written to "
                             "{}; move one of them away",
            unread, sources.front().path));
    return succeeded;
}

namespace {

/* Takes the texts of the default language's file */
class SourceReader: public TextVisitor {
public:
    explicit SourceReader(Project& project): _project(project) {}

    bool isWanted(Containers::StringView code) override {
        return code == _project.defaultLanguage();
    }
    bool begin(const LanguageSource&, const LanguageFile&,
        const Utility::Json&) override {
        return true;
    }
    void add(const LanguageText& text) override {
        if(text.text.data())
            _project.record().assumeSource(text.key, text.text);
    }

private:
    Project& _project;
};

/* Finds the terms whose texts the default language's file has */
class PlaceReader: public TextVisitor {
public:
    explicit PlaceReader(Project& project, const std::vector<Term>& terms):
        _project(project), _terms(terms) {}

    bool isWanted(Containers::StringView code) override {
        return code == _project.defaultLanguage();
    }
    bool begin(const LanguageSource&, const LanguageFile&,
        const Utility::Json&) override {
        return true;
    }
    void add(const LanguageText& text) override {
        const auto term = std::lower_bound(_terms.begin(), _terms.end(),
            text.key, [](const Term& t, Containers::StringView key) {
                return StrLess{}(t.key, key);
            });
        if(term != _terms.end() && term->key == text.key &&
            term->isTranslated && text.text.data() && term->source == text.text)
            _inPlace.push_back(std::size_t(term - _terms.begin()));
    }

    const std::vector<std::size_t>& inPlace() const { return _inPlace; }

private:
    Project& _project;
    const std::vector<Term>& _terms;
    std::vector<std::size_t> _inPlace;
};

/* Without a record, it's likely that translations were made from what stands
   beside them. Faults of the file are printed when it's read again. */
std::vector<Term> withAssumedSources(Project& project) {
    std::vector<Term> terms = project.terms();
    if(!project.record().hasSources()) {
        const NoMessages silence;
        SourceReader reader{project};
        readTexts(project,
            LanguageTexts{project.editor(), terms, project.record()}, true,
            reader);
    }
    return terms;
}

}

bool isLanguage(Project& project, Containers::StringView code) {
    return project.hasLanguage(code) || languageIndex(code) != AllLanguageCount;
}

bool isKnown(Project& project, const LanguageFile& file) {
    if(isLanguage(project, file.code))
        return true;
    fail(Utility::format("{}: unknown language code '{}'{}", file.path,
        file.code,
        /* To find out which ones are near takes a while */
        MessageLimit::isReached() ? Containers::String{}
                                  : suggestion(file.code, allLanguages())));
    return false;
}

/* A record may be older than the files, as somebody forgot to commit it. What
   the file has in its place didn't move. */
ProjectTexts::ProjectTexts(Project& project):
    terms{withAssumedSources(project)}, texts{project.editor(), terms,
                                            project.record()} {
    if(!texts.moves().count())
        return;
    const NoMessages silence;
    PlaceReader reader{project, terms};
    readTexts(project, texts, true, reader);
    for(const std::size_t term: reader.inPlace())
        texts.moves().keep(terms[term].key, term);
}

void Losses::drop(Containers::StringView what, Containers::StringView file) {
    if(!dropped++)
        example = Utility::format("'{}' in {}", what, file);
}

bool readReplaced(Project& project, Codes& codes, ReplacedFiles& out) {
    const ProjectTexts all{project};
    out.movedCount = all.texts.moves().count();
    ReplacedFilesReader reader{project, all.texts, codes, out};
    const bool succeeded = readTexts(project, all.texts, false, reader);
    const LanguageSource target = project.target();
    if(target.isArchive)
        for(const Containers::String& name:
            foreignEntries(project, target.path))
            out.losses.drop(name, target.path);
    return succeeded;
}

std::size_t recordExport(
    Project& project, const Codes& codes, const Origins& origins) {
    const std::vector<Term> terms = project.terms();
    for(const Containers::String& code: codes) {
        const auto outdated = origins.find(code);
        Tracking::recordExport(project.record(), project.editor(), code, terms,
            [&](const Term& term, Containers::StringView) {
                if(outdated != origins.end()) {
                    const auto found = outdated->second.find(term.key);
                    if(found != outdated->second.end())
                        return found->second;
                }
                return Tracking::TranslationRecord::originOf(term.source);
            });
    }
    return std::size_t(std::count_if(terms.begin(), terms.end(),
        [](const Term& term) { return term.isTranslated; }));
}

void rememberSources(
    Project& project, const std::vector<SourceDifference>& differences) {
    for(const SourceDifference& difference: differences)
        project.record().addFormerSource(difference.inFile);
}

bool hasMovedTexts(Project& project) {
    return ProjectTexts{project}.texts.moves().count();
}

}}
