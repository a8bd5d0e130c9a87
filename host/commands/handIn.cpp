#include <algorithm>
#include <unordered_map>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "FileExport.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "Tracking/Implementation/TermFinder.h"
#include "exchange/csv.h"
#include "exchange/xliff.h"
#include "project/LanguageFiles.h"
#include "project/LanguageTable.h"
#include "storage/files.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"
#include "terminal/editDistance.h"

namespace OrrelinEngine { namespace Host {

namespace {

using Tracking::TermFinder;
using Tracking::TranslationRecord;

/* A file that came back */
struct Returned {
    Containers::String path;
    std::vector<ExchangeTable> tables;
};

/* By what starts the content: a tag or the name of a column */
Containers::String readReturned(Containers::StringView content,
    Containers::StringView sourceCode, Returned& out) {
    const Containers::String fault = textFault(content);
    if(!fault.isEmpty())
        return fault;
    const Containers::StringView text = withoutByteOrderMark(content).trimmed();
    if(text.hasPrefix('<'))
        return readXliff(content, out.tables);
    if(text.hasPrefix('{'))
        return "it isn't XLIFF or CSV; language files belong into the folder of "
               "the languages, where 'import' without --from reads them";
    out.tables.emplace_back();
    return readCsv(content, sourceCode, out.tables.back());
}

/* Prints the faults of all files */
bool readAll(Project& project, const HandInOptions& options,
    std::vector<Returned>& out) {
    bool areFine = true;
    for(const Containers::String& path: options.files) {
        FileContent file;
        Returned returned{path, {}};
        Containers::String fault;
        if(!project.readFile(path, file)) {
            areFine = false;
            continue;
        }
        if(!file.exists)
            fault = Utility::format("there is no {}", path);
        else {
            fault =
                readReturned(file.content, project.defaultLanguage(), returned);
            if(!fault.isEmpty())
                fault = Utility::format("can't read {}: {}", path, fault);
        }
        for(const ExchangeTable& table: returned.tables)
            if(fault.isEmpty() && table.sourceCode != project.defaultLanguage())
                fault = Utility::format(
                    "{} has texts in '{}' to translate, but the project's own "
                    "are in '{}'",
                    path, table.sourceCode, project.defaultLanguage());
        if(!fault.isEmpty())
            fail(fault);
        areFine = areFine && fault.isEmpty();
        out.push_back(std::move(returned));
    }
    return areFine;
}

bool hasTargets(const ExchangeLanguage& language) {
    return std::any_of(language.targets.begin(), language.targets.end(),
        [](const ExchangeTarget& target) { return !target.text.isEmpty(); });
}

/* Finds the languages that are in the files, and adds those that the project
   lacks. Drops the others from the tables. Prints why if that can't be done. */
class LanguageChoice {
public:
    explicit LanguageChoice(Project& project, const HandInOptions& options):
        _project(project), _options(options) {}

    bool choose(std::vector<Returned>& files) {
        for(const Containers::String& code: _options.codes)
            if(!isFileName(code))
                return false;
        const MessageLimit limit;
        for(Returned& file: files)
            for(ExchangeTable& table: file.tables) {
                auto& all = table.languages;
                all.erase(std::remove_if(all.begin(), all.end(),
                              [&](const ExchangeLanguage& language) {
                                  return !isTaken(file.path, table, language);
                              }),
                    all.end());
            }
        for(const Containers::String& code: _options.codes)
            if(!contains(codes, code) && _isFine) {
                fail(Utility::format(
                    "none of the files has translations to '{}'", code));
                return false;
            }
        if(_isFine && codes.empty())
            fail("the files have no translations");
        return _isFine && !codes.empty() && addMissing();
    }

    Codes codes;
    Codes added;

private:
    static bool contains(const Codes& codes, Containers::StringView code) {
        return std::find(codes.begin(), codes.end(), code) != codes.end();
    }

    bool isTaken(Containers::StringView file, const ExchangeTable& table,
        const ExchangeLanguage& language) {
        const Containers::StringView code = language.code;
        if(!_options.codes.empty() && !contains(_options.codes, code))
            return false;
        if(!isLanguage(_project, code)) {
            fail(Utility::format("{}: '{}' isn't the code of a language, so "
                                 "nothing is taken from there{}",
                file, code,
                MessageLimit::isReached() ? Containers::String{}
                                          : suggestion(code, allLanguages())));
            /* Of many columns, one may be for something else */
            _isFine = _isFine && table.languages.size() != 1;
            return false;
        }
        if(code == _project.defaultLanguage()) {
            fail(Utility::format("{} can't have translations to '{}', the "
                                 "language of the project's own texts",
                file, code));
            return _isFine = false;
        }
        if(!isFileName(code))
            return _isFine = false;
        const bool hasTexts = hasTargets(language);
        if(!contains(codes, code) && (hasTexts || _project.hasLanguage(code)))
            codes.emplace_back(code);
        return hasTexts;
    }

    bool addMissing() {
        for(const Containers::String& code: codes)
            if(!_project.hasLanguage(code)) {
                if(!_project.provideDefaultLanguage(added))
                    return false;
                LocalizationTools::addLanguage(
                    _project.editor(), languageIndex(code));
                added.push_back(code);
            }
        return true;
    }

    Project& _project;
    const HandInOptions& _options;
    bool _isFine = true;
};

/* What became of the translations to a language */
struct LanguageCounts {
    std::size_t added = 0;
    std::size_t changed = 0;
    /* Of these two */
    std::size_t outdated = 0;
    std::size_t equal = 0;
    std::size_t confirmed = 0;

    bool isChanged() const { return added || changed || confirmed; }
};

struct TargetConflict {
    Containers::String code, key, inFile, inProject, file;
    /* Whether it's known what was handed out */
    bool isKnown;
};

/* What became of all */
struct HandIn {
    std::map<Containers::String, LanguageCounts, StrLess> languages;
    std::vector<TargetConflict> conflicts;
    Codes added;
    FileExport files;
    /* Translations that are newer in the project's files, that were chosen from
       there, that are empty, a copy of the source, to be reviewed */
    std::size_t newer = 0, kept = 0, emptied = 0, copied = 0, reviewed = 0;
    /* Texts with another source now, and with another key */
    std::size_t older = 0, moved = 0;
    int result = Success;
};

/* Puts returned translations into the project's tables. There are up to three
   of each: the one that was handed out, which only marks tell, the one in the
   project's file and the returned one. */
class Merge {
public:
    explicit Merge(Project& project, const HandInOptions& options, HandIn& out):
        _project(project), _options(options),
        _out(out), _terms{project.terms()} {}

    void add(const Containers::String& file, const ExchangeTable& table) {
        _file = file;
        for(const Containers::String& fault: table.faults)
            fail(Utility::format("{}: {}, so it isn't taken", file, fault));
        const std::vector<std::size_t> terms = findTerms(table);
        for(const ExchangeLanguage& language: table.languages) {
            _code = language.code;
            _translations = &_project.localization().translations[_code];
            _origins = &_out.files.replaced.origins[_code];
            _counts = &_out.languages[_code];
            _marks = &_allMarks[_code];
            for(std::size_t i = 0; i != terms.size(); ++i)
                if(terms[i] != TermFinder::NotFound)
                    merge(
                        table.texts[i], _terms[terms[i]], language.targets[i]);
        }
    }

private:
    /* By key, the marks in the files */
    typedef std::unordered_map<Containers::StringView, Containers::String,
        StrHash, StrEq>
        Marking;

    /* The term of each row. Prints rows that have none. */
    std::vector<std::size_t> findTerms(const ExchangeTable& table) {
        std::vector<std::size_t> out;
        out.reserve(table.texts.size());
        std::vector<bool> isInPlace(_terms.size(), false);
        TermFinder finder{_terms};
        for(const ExchangeText& text: table.texts) {
            std::size_t term = finder.find(text.key);
            if(term != TermFinder::NotFound && !_terms[term].isTranslated)
                term = TermFinder::NotFound;
            out.push_back(term);
            if(term != TermFinder::NotFound &&
                _terms[term].source == text.source)
                isInPlace[term] = true;
        }
        for(std::size_t i = 0; i != out.size(); ++i) {
            const ExchangeText& text = table.texts[i];
            if(out[i] != TermFinder::NotFound &&
                _terms[out[i]].source == text.source)
                continue;
            const std::size_t target = findMoved(text, out[i], isInPlace);
            if(target != TermFinder::NotFound) {
                out[i] = target;
                ++_out.moved;
            } else if(out[i] == TermFinder::NotFound)
                warnOfUnknown(text);
            else
                warnOfSource(table, text);
        }
        return out;
    }

    /* A text that has another key now is known by its source, if that's in one
       place only and the file has nothing else for that one. A chosen key stays
       with its text. */
    std::size_t findMoved(const ExchangeText& text, std::size_t term,
        const std::vector<bool>& isInPlace) {
        if(_bySource.empty())
            for(std::size_t i = 0; i != _terms.size(); ++i)
                if(_terms[i].isTranslated && !_terms[i].source.isEmpty()) {
                    const auto result = _bySource.emplace(_terms[i].source, i);
                    if(!result.second)
                        result.first->second = TermFinder::NotFound;
                }
        const auto found = _bySource.find(text.source);
        return found != _bySource.end() &&
                found->second != TermFinder::NotFound &&
                !isInPlace[found->second] &&
                (term == TermFinder::NotFound ||
                    Tracking::isGenerated(_project.editor(), _terms[term]))
            ? found->second
            : TermFinder::NotFound;
    }

    void warn(const ExchangeText& text, Containers::StringView what) {
        fail(Utility::format(
            "{}: '{}' at line {} {}", _file, text.key, text.line, what));
    }

    void warnOfUnknown(const ExchangeText& text) {
        /* To find a key among hundreds of thousands takes a while */
        constexpr std::size_t MaxSuggestions = 5;
        const bool isSearched =
            !MessageLimit::isReached() && _suggestionCount++ < MaxSuggestions;
        warn(text,
            "isn't a key of the project, so its text isn't taken" +
                (isSearched ? keySuggestion(text.key, _terms)
                            : Containers::String{}));
    }

    void warnOfSource(const ExchangeTable& table, const ExchangeText& text) {
        if(text.marks.isEmpty() ||
            Marks{text.key}.areIn(text.marks, table.sourceCode, text.source))
            ++_out.older;
        else
            warn(text,
                "has another source text than was handed out, which isn't "
                "taken; its translations count as outdated");
    }

    void merge(const ExchangeText& text, const Term& term,
        const ExchangeTarget& target) {
        /* Converters may add a second unit without them */
        Containers::String& marks = (*_marks)[term.key];
        if(marks.isEmpty())
            marks = text.marks;
        const auto found = _translations->find(term.key);
        const bool exists = found != _translations->end() && found->second;
        const auto isHandedOut = [&](Containers::StringView translation) {
            return Marks{text.key}.areIn(marks, _code, translation);
        };
        if(target.text.isEmpty()) {
            _out.emptied += exists && isHandedOut(*found->second);
            return;
        }
        if(exists && *found->second == target.text) {
            confirm(text, term, target);
            return;
        }
        if(!isMeant(text, term, target))
            return;
        if(exists && !isHandedOut(*found->second)) {
            if(isHandedOut(target.text)) {
                ++_out.newer;
                return;
            }
            if(!_options.choice.has(term.key)) {
                _out.conflicts.push_back({_code, term.key, target.text,
                    *found->second, _file, !marks.isEmpty()});
                return;
            }
            if(_options.choice.of(term.key) == Side::Project) {
                ++_out.kept;
                return;
            }
        }
        ++(exists ? _counts->changed : _counts->added);
        take(text, term, target);
    }

    /* Whether it's a translation at all */
    bool isMeant(const ExchangeText& text, const Term& term,
        const ExchangeTarget& target) {
        if(target.state == TargetState::NeedsTranslation &&
            target.text == text.source) {
            ++_out.copied;
            return false;
        }
        if(target.text != "None" || term.source == "None" ||
            _options.allowsEmpty)
            return true;
        warn(text,
            "is the word None, which tools write for a missing text, so it "
            "isn't taken; --allow-empty takes it");
        return false;
    }

    /* The translator says that it fits the source beside it */
    void confirm(const ExchangeText& text, const Term& term,
        const ExchangeTarget& target) {
        if(target.state == TargetState::Translated &&
            text.source == term.source)
            _counts->confirmed += _origins->erase(term.key);
    }

    void take(const ExchangeText& text, const Term& term,
        const ExchangeTarget& target) {
        (*_translations)[term.key] =
            Containers::Optional<Containers::String>{target.text};
        _counts->equal += target.text == term.source;
        if(text.source != term.source) {
            (*_origins)[term.key] = TranslationRecord::originOf(text.source);
            _project.record().addFormerSource(text.source);
            ++_counts->outdated;
        } else if(target.state == TargetState::NeedsReview ||
            target.state == TargetState::NeedsTranslation) {
            /* Made from nothing, if it isn't known from what */
            _origins->emplace(term.key, TranslationRecord::originOf({}));
            ++_counts->outdated;
            ++_out.reviewed;
        } else
            _origins->erase(term.key);
    }

    Project& _project;
    const HandInOptions& _options;
    HandIn& _out;
    const std::vector<Term> _terms;
    std::unordered_map<Containers::StringView, std::size_t, StrHash, StrEq>
        _bySource;
    std::map<Containers::String, Marking, StrLess> _allMarks;
    std::size_t _suggestionCount = 0;

    /* Of the file and the language that are being merged */
    Containers::String _file, _code;
    TranslationMap* _translations = nullptr;
    std::map<Containers::String, std::uint32_t, StrLess>* _origins = nullptr;
    LanguageCounts* _counts = nullptr;
    Marking* _marks = nullptr;
};

int failOnConflicts(const std::vector<TargetConflict>& conflicts) {
    {
        const MessageLimit limit;
        for(const TargetConflict& conflict: conflicts)
            fail(Utility::format("'{}' reads '{}' in {}, but '{}' in {}.json{}",
                conflict.key, conflict.inFile, conflict.file,
                conflict.inProject, conflict.code,
                conflict.isKnown
                    ? ""
                    : ", and it isn't known which was handed out"));
    }
    return failUndecided(conflicts.size(), conflicts.front().key);
}

/* Only files of languages that change are written, unless all go together */
void dropUnchanged(Project& project, HandIn& out) {
    Codes& codes = out.files.codes;
    if(std::find(codes.begin(), codes.end(), project.defaultLanguage()) ==
        codes.end())
        codes.erase(std::remove_if(codes.begin(), codes.end(),
                        [&](const Containers::String& code) {
                            return !out.languages[code].isChanged();
                        }),
            codes.end());
}

/* Returns the exit code */
int mergeFiles(Project& project, const HandInOptions& options, HandIn& out) {
    std::vector<Returned> files;
    if(!options.choice.check(project) || !readAll(project, options, files))
        return fail("nothing was written");
    LanguageChoice languages{project, options};
    if(!languages.choose(files))
        return Failure;
    out.added = std::move(languages.added);
    ExportOptions exporting;
    exporting.codes = languages.codes;
    const int result = out.files.read(project, exporting);
    if(result == Conflict)
        fail("that has to be settled by 'import' or 'export' first");
    if(result != Success)
        return result;
    {
        const MessageLimit limit;
        for(const Containers::String& code: languages.codes)
            out.languages[code];
        Merge merge{project, options, out};
        for(const Returned& file: files)
            for(const ExchangeTable& table: file.tables)
                merge.add(file.path, table);
    }
    if(!out.conflicts.empty())
        return failOnConflicts(out.conflicts);
    dropUnchanged(project, out);
    return Success;
}

void printTable(Project& project, const HandIn& out) {
    Table table{{{"code"}, {"language"}, {"new", ColumnKind::Number},
        {"changed", ColumnKind::Number}, {"outdated", ColumnKind::Number},
        {"confirmed", ColumnKind::Number}, {}}};
    for(const ProjectLanguage& language: project.languages()) {
        const auto found = out.languages.find(language.code);
        if(found == out.languages.end())
            continue;
        const LanguageCounts& counts = found->second;
        const bool isAdded = std::find(out.added.begin(), out.added.end(),
                                 language.code) != out.added.end();
        table.add({{language.code}, {language.name},
            {Utility::format("{}", counts.added)},
            {Utility::format("{}", counts.changed)},
            {Utility::format("{}", counts.outdated)},
            {Utility::format("{}", counts.confirmed)},
            {isAdded ? "added to the project" : "", Style::Bold}});
    }
    table.print();
}

void printNote(std::size_t count, Containers::StringView noun, const char* one,
    const char* several) {
    if(count)
        printLine(Utility::format("{} {}", counted(count, noun),
            Containers::StringView{count == 1 ? one : several}));
}

void printNotes(const HandIn& out) {
    for(const auto& language: out.languages)
        if(language.second.equal)
            printLine(Utility::format(
                "{} to {} the same as in the project's own language.",
                counted(language.second.equal, "translation") +
                    (language.second.equal == 1 ? " is" : " are"),
                language.first));
    printNote(out.moved, "text",
        "had another key when it was handed out; its translations went with "
        "it.",
        "had other keys when they were handed out; their translations went "
        "with them.");
    printNote(out.older, "text",
        "was handed out before it changed in the project, so its translations "
        "are outdated.",
        "were handed out before they changed in the project, so their "
        "translations are outdated.");
    printNote(out.reviewed, "translation",
        "is marked for review, so it counts as outdated.",
        "are marked for review, so they count as outdated.");
    printNote(out.newer, "translation",
        "was only changed in the project's files since, and stays.",
        "were only changed in the project's files since, and stay.");
    printNote(out.kept, "translation", "stays as it is in the project's files.",
        "stay as they are in the project's files.");
    printNote(out.emptied, "translation", "was emptied, but stays.",
        "were emptied, but stay.");
    printNote(out.copied, "translation",
        "isn't taken, as it's a copy of the source text that is still marked "
        "as to translate.",
        "aren't taken, as they are copies of the source texts that are still "
        "marked as to translate.");
}

}

int handIn(const ProjectOptions& projectOptions, const HandInOptions& options) {
    Project project;
    HandIn out;
    const auto merge = [&](Project&) {
        out = {};
        out.result = mergeFiles(project, options, out);
        return true;
    };
    if(!(options.dryRun ? project.read(projectOptions, merge)
                        : project.openForWriting(projectOptions, "import") &&
                   merge(project)))
        return Failure;
    if(out.result != Success)
        return out.result;
    const bool isChanged = !out.added.empty() ||
        std::any_of(out.languages.begin(), out.languages.end(),
            [](const auto& language) { return language.second.isChanged(); });
    if(isChanged && !options.dryRun &&
        !out.files.write(project, !out.added.empty()))
        return Failure;
    printTable(project, out);
    printLine();
    printNotes(out);
    if(options.dryRun)
        printLine("Dry run: nothing was saved.");
    else if(isChanged)
        out.files.print(project);
    else
        printLine("Nothing to change.");
    return Success;
}

}}
