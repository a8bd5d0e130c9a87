#include "Translations.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Json.h>

#include "ChangeManager.h"
#include "LanguageFileFaults.h"
#include "LanguageFiles.h"
#include "LanguageTable.h"
#include "Messages.h"
#include "Tools/languageIndex.h"
#include "Tools/Implementation/importLanguageFile.h"
#include "Tools/Implementation/parseLanguageFile.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef Utility::JsonToken::Type Type;

bool all(Containers::StringView) {
    return true;
}

bool contains(const Codes& codes, Containers::StringView code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/* Finds terms by their keys. Exported files list them in the order of the
   table, so the term behind the last one is tried before searching. */
class TermFinder {
public:
    explicit TermFinder(const std::vector<Term>& terms): _terms(terms) {}

    /* Null if there's no such term that is to be translated */
    const Term* find(Containers::StringView key) {
        if(_next == _terms.size() || _terms[_next].key != key)
            _next =
                std::size_t(std::lower_bound(_terms.begin(), _terms.end(), key,
                                [](const Term& term, Containers::StringView k) {
                                    return StrLess{}(term.key, k);
                                }) -
                    _terms.begin());
        if(_next == _terms.size() || _terms[_next].key != key)
            return nullptr;
        const Term& out = _terms[_next++];
        return out.isTranslated ? &out : nullptr;
    }

private:
    const std::vector<Term>& _terms;
    std::size_t _next = 0;
};

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
    if(!texts) {
        faults.tell();
        return false;
    }
    for(const Utility::JsonObjectItem text: texts->asObject())
        if(text.value().type() != Type::String &&
            text.value().type() != Type::Null) {
            faults.tellWrongTypes();
            break;
        }
    return function(*json, texts);
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

/* The library's warnings are silenced, as withTexts() has printed the faults
   already, with their places */
void import(Project& project, const LanguageFile& file,
    const Utility::JsonIterator& texts) {
    Utility::Warning silence{nullptr};
    LocalizationTools::importTranslation(project.editor(), file.name, texts);
}

/* Fills the tables, but doesn't change the project. The default language needs
   no table, as its texts are those of the project. */
void takeTranslations(Project& project, const LanguageFile& file,
    const Utility::JsonIterator& texts) {
    if(file.code == project.defaultLanguage())
        return;
    Utility::Warning silence{nullptr};
    LocalizationTools::importTexts(project.editor(), file.name, texts,
        project.localization().translations[file.code], false);
}

/* What takeTranslations() would give texts to */
void markTranslated(const std::vector<Term>& terms,
    const Utility::JsonIterator& texts, std::vector<bool>& out) {
    out.resize(terms.size());
    TermFinder finder{terms};
    for(const Utility::JsonObjectItem text: texts->asObject()) {
        const Type type = text.value().type();
        if(type != Type::String && type != Type::Null)
            continue;
        if(const Term* const term = finder.find(text.key()))
            out[std::size_t(term - terms.data())] = type == Type::String;
    }
}

/* Adds up what a file holds that a new one wouldn't */
class LossCount {
public:
    explicit LossCount(Project& project, const std::vector<Term>& terms,
        const LanguageFile& file, bool isReplaced, Losses& losses):
        _file(file),
        _terms{terms},
        _losses(losses), _isDefault{file.code == project.defaultLanguage()} {
        if(isReplaced) {
            _translations = &project.localization().translations[file.code];
            _next = _translations->begin();
        }
    }

    void add(const Utility::Json& json, const Utility::JsonIterator& texts) {
        /* Of two objects with texts, only the first is read */
        bool isFirst = true;
        for(const Utility::JsonObjectItem member: json.root().asObject())
            if(member.key() != "translation" || !std::exchange(isFirst, false))
                drop(member.key());
        for(const Utility::JsonObjectItem text: texts->asObject())
            if(text.value().type() != Type::Null)
                add(text.key(), text.value());
    }

private:
    void add(Containers::StringView key, const Utility::JsonToken& value) {
        const Term* const term = _translations ? _terms.find(key) : nullptr;
        if(!term || value.type() != Type::String) {
            drop(key);
            return;
        }
        if(_isDefault) {
            _losses.replaced += value.asString() != term->source;
            return;
        }
        /* Mostly in the order of the file */
        if(_next == _translations->end() || _next->first != key)
            _next = _translations->find(key);
        if(_next == _translations->end() || !_next->second ||
            *_next->second != value.asString())
            drop(key);
        if(_next != _translations->end())
            ++_next;
    }

    void drop(Containers::StringView key) { _losses.drop(key, _file.path); }

    const LanguageFile& _file;
    TermFinder _terms;
    Losses& _losses;
    bool _isDefault;
    const TranslationMap* _translations = nullptr;
    TranslationMap::const_iterator _next;
};

/* Calls the function with the files where the project has them now, and with
   those of languages that have none there, where it had them before. So none is
   taken for untranslated after a switch. */
bool forEachSource(Project& project,
    const std::function<bool(Containers::StringView code)>& isWanted,
    const std::function<bool(const LanguageSource&, LanguageFile&)>& function) {
    Codes found;
    const LanguageSource now = project.target();
    const bool succeeded = forEachLanguageFile(
        project, now,
        [&](Containers::StringView name) {
            const Containers::StringView code = name.exceptSuffix(".json");
            found.push_back(code);
            return isWanted(code);
        },
        [&](LanguageFile& file) { return function(now, file); });

    Codes missing;
    for(const ProjectLanguage& language: project.languages())
        if(!language.isDefault && !contains(found, language.code))
            missing.push_back(language.code);
    const LanguageSource before = project.formerTarget();
    return (missing.empty() ||
               forEachLanguageFile(
                   project, before,
                   [&](Containers::StringView name) {
                       const Containers::StringView code =
                           name.exceptSuffix(".json");
                       return contains(missing, code) && isWanted(code);
                   },
                   [&](LanguageFile& file) {
                       return function(before, file);
                   })) &&
        succeeded;
}

/* Texts that the file of the default language changes. The terms are listed for
   it alone, which is less memory while the others are imported. */
void addChanges(Project& project, const Utility::JsonIterator& texts,
    std::vector<SourceChange>& out) {
    const std::vector<Term> terms = project.terms();
    TermFinder finder{terms};
    for(const Utility::JsonObjectItem text: texts->asObject()) {
        const Term* const term = text.value().type() == Type::String
            ? finder.find(text.key())
            : nullptr;
        if(term && term->source.data() &&
            term->source != text.value().asString())
            out.push_back({term->key, term->path, term->source});
    }
}

/* Keeps one entry for each text that differs now. A key that a file has twice
   comes twice, and its last text may be the project's again. */
void keepChanged(Project& project, std::vector<SourceChange>& changes) {
    std::stable_sort(changes.begin(), changes.end(),
        [](const SourceChange& a, const SourceChange& b) {
            return StrLess{}(a.key, b.key);
        });
    changes.erase(std::unique(changes.begin(), changes.end(),
                      [](const SourceChange& a, const SourceChange& b) {
                          return a.path == b.path;
                      }),
        changes.end());
    changes.erase(std::remove_if(changes.begin(), changes.end(),
                      [&](const SourceChange& change) {
                          return project.source(change.path) == change.before;
                      }),
        changes.end());
}

}

void Losses::drop(Containers::StringView what, Containers::StringView file) {
    if(!dropped++)
        example = Utility::format("'{}' in {}", what, file);
}

bool findTranslated(Project& project, const std::vector<Term>& terms,
    TranslatedTerms& translated) {
    return forEachSource(
        project, all, [&](const LanguageSource&, LanguageFile& file) {
            const bool known = isKnown(project, file);
            return withTexts(file,
                [&](const Utility::Json&, const Utility::JsonIterator& texts) {
                    if(file.code != project.defaultLanguage())
                        markTranslated(terms, texts, translated[file.code]);
                    return known;
                });
        });
}

bool readReplaced(Project& project, Codes& codes, Losses& losses) {
    const std::vector<Term> terms = project.terms();
    const LanguageSource target = project.target();
    const bool takesAll = codes.empty();
    /* Loose files of other languages stay */
    const auto isWanted = [&](Containers::StringView code) {
        return takesAll || target.isArchive || contains(codes, code);
    };
    const bool succeeded = forEachSource(project, isWanted,
        [&](const LanguageSource& source, LanguageFile& file) {
            if(takesAll && isLanguage(project, file.code))
                codes.push_back(file.code);
            return withTexts(file,
                [&](const Utility::Json& json,
                    const Utility::JsonIterator& texts) {
                    takeTranslations(project, file, texts);
                    if(source.path == target.path)
                        LossCount{project, terms, file,
                            contains(codes, file.code), losses}
                            .add(json, texts);
                    return true;
                });
        });
    if(target.isArchive)
        for(const Containers::String& name:
            foreignEntries(project, target.path))
            losses.drop(name, target.path);
    return succeeded;
}

bool importAll(Project& project, std::vector<SourceChange>& changes) {
    project.changeManager().beginGroup();
    const bool succeeded = forEachLanguageFile(
        project, project.target(), all, [&](LanguageFile& file) {
            const bool known = isKnown(project, file);
            return withTexts(file,
                [&](const Utility::Json&, const Utility::JsonIterator& texts) {
                    if(file.code == project.defaultLanguage())
                        addChanges(project, texts, changes);
                    if(known)
                        import(project, file, texts);
                    return known;
                });
        });
    project.changeManager().commit();
    keepChanged(project, changes);
    return succeeded;
}

}}
