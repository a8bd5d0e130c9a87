#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "project/LanguageFiles.h"
#include "project/StateReader.h"
#include "project/Translations.h"
#include "project/undescribedTypes.h"
#include "project/words.h"
#include "terminal/JsonList.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

struct LanguageStatus {
    ProjectLanguage language;
    /* From the project's text as it is now */
    std::size_t translated;
    std::size_t outdated;
    std::size_t total;
    /* Of the source texts that aren't translated from what they are now */
    std::size_t words;

    std::size_t missing() const { return total - translated - outdated; }
    double share() const {
        return total ? double(translated) / double(total) : 1.0;
    }
    /* Rounded down to tenths, so that 100 means that all is there */
    double percent() const {
        return total ? double(translated * 1000 / total) / 10.0 : 100.0;
    }
};

/* An outdated translation */
struct Outdated {
    Containers::String code;
    Containers::String key;
    /* What it was made from, empty if it isn't known anymore */
    Containers::String before;
    Containers::String now;
};

struct Status {
    std::vector<LanguageStatus> languages;
    /* The first ones, as many as are shown */
    std::vector<Outdated> outdated;
    bool areFilesFine = true;
};

/* Of the default language, what the project has */
std::size_t sourceCount(const std::vector<Term>& terms) {
    return std::size_t(
        std::count_if(terms.begin(), terms.end(), [&](const Term& term) {
            return term.isTranslated && term.source.data();
        }));
}

std::size_t wordsLeft(const std::vector<Term>& terms, const StateReader& reader,
    Containers::StringView code, TermWords& words) {
    std::size_t out = 0;
    reader.forEachLeft(code, [&](std::size_t term, TextState) {
        if(terms[term].isTranslated)
            out += words.of(terms, term);
    });
    return out;
}

void printRecordNote(Project& project) {
    if(!project.record().isEmpty() || project.languages().size() < 2)
        return;
    printLine();
    printLine(Utility::format(
        "No {} says what the translations were made from; 'import' begins "
        "one.",
        Tracking::TranslationRecord::FileName));
}

void findStatus(Project& project, Status& out) {
    out = {};
    const ProjectTexts all{project};
    const std::vector<Term>& terms = all.terms;
    const std::size_t total = std::size_t(std::count_if(terms.begin(),
        terms.end(), [](const Term& term) { return term.isTranslated; }));
    StateReader reader{project, all.texts, Lines::MaxCount};
    out.areFilesFine = readTexts(project, all.texts, false, reader);
    for(const OutdatedText& text: reader.outdated())
        out.outdated.push_back({text.code, terms[text.term].key,
            project.record().formerSource(text.origin),
            terms[text.term].source});
    TermWords words;
    for(const ProjectLanguage& language: project.languages())
        out.languages.push_back(language.isDefault
                ? LanguageStatus{language, sourceCount(terms), 0, total, 0}
                : LanguageStatus{language,
                      reader.count(language.code, TextState::Translated),
                      reader.count(language.code, TextState::Outdated), total,
                      wordsLeft(terms, reader, language.code, words)});
}

void printOutdated(const std::vector<LanguageStatus>& languages,
    const std::vector<Outdated>& outdated) {
    std::size_t count = 0;
    for(const LanguageStatus& status: languages)
        count += status.outdated;
    if(!count)
        return;
    printLine();
    printLine(Utility::format("{} made from another text than the project's "
                              "now:",
        counted(count, "translation") + (count == 1 ? " was" : " were")));
    for(const Outdated& translation: outdated) {
        printLine(Utility::format("{}  {}", translation.code, translation.key));
        if(!translation.before.isEmpty())
            printLine("    was: " + translation.before);
        printLine("    is:  " + translation.now);
    }
    if(count > outdated.size())
        printLine(Utility::format("and {} more", count - outdated.size()));
    printLine("'confirm' lets those count that still fit.");
}

void printJson(const std::vector<LanguageStatus>& languages) {
    JsonList out;
    for(const LanguageStatus& status: languages) {
        out.beginObject();
        out.add("code", status.language.code);
        out.add("name", status.language.name);
        out.add("default", status.language.isDefault);
        out.add("translated", status.translated);
        out.add("outdated", status.outdated);
        out.add("missing", status.missing());
        out.add("total", status.total);
        out.add("percent", status.percent());
        out.add("words", status.words);
        out.endObject();
    }
    out.print();
}

void printTable(const std::vector<LanguageStatus>& languages) {
    Table table{{{"code"}, {"language"}, {"translated", ColumnKind::Number},
        {"outdated", ColumnKind::Number}, {"missing", ColumnKind::Number},
        {"words", ColumnKind::Number}, {"", ColumnKind::Number},
        {"", ColumnKind::Bar}}};
    for(const LanguageStatus& status: languages) {
        const Style style =
            status.translated != status.total ? Style::Bad : Style::Good;
        table.add({{status.language.code},
            {status.language.isDefault ? status.language.name + " (default)"
                                       : status.language.name},
            {Utility::format("{}", status.translated)},
            {Utility::format("{}", status.outdated)},
            {Utility::format("{}", status.missing())},
            {Utility::format("{}", status.words)},
            {Utility::format("{:.1f} %", status.percent()), style},
            {{}, style, status.share()}});
    }
    table.print();
}

/* The list for scripts stays one of languages */
void printHints(const std::vector<Containers::String>& hints, bool json) {
    Lines warnings;
    if(!json && !hints.empty())
        printLine();
    for(const Containers::String& hint: hints) {
        if(json)
            warnings.add(std::string{hint});
        else
            printLine(hint);
    }
    warnings.print();
}

bool checkLimit(const std::vector<LanguageStatus>& languages, double limit,
    bool allowOutdated) {
    std::string below;
    for(LanguageStatus status: languages) {
        if(allowOutdated)
            status.translated += std::exchange(status.outdated, 0);
        if(status.language.isDefault ||
            double(status.translated) * 100.0 >= limit * double(status.total))
            continue;
        below += std::string{Utility::format("{}{} ({:.1f} %)",
            below.empty() ? "" : ", ", status.language.code, status.percent())};
    }
    if(!below.empty())
        fail(Utility::format("translated to less than {} %: {}", limit,
            Containers::StringView{below}));
    return below.empty();
}

bool checkDescribed(const Project& project, const UndescribedTypes& types) {
    if(!types.empty())
        fail(Utility::format("{} doesn't describe {} of components; "
                             "--allow-undescribed lets that pass",
            descriptionFile(project), counted(types.size(), "type")));
    return types.empty();
}

}

int showStatus(const ProjectOptions& options, bool json, const Gate& gate) {
    Project project;
    Status status;
    UndescribedTypes undescribed;
    if(!project.read(options, [&](Project& p) {
           findStatus(p, status);
           undescribed = findUndescribedTypes(p);
           return true;
       }))
        return Failure;
    const std::vector<LanguageStatus>& languages = status.languages;
    if(json)
        printJson(languages);
    else if(languages.empty())
        printLine("The project has no languages yet; 'add' gives it one.");
    else {
        printTable(languages);
        printOutdated(languages, status.outdated);
        printRecordNote(project);
    }
    printHints(hints(project, undescribed), json);
    bool isPassed = true;
    if(gate.failUnder) {
        isPassed = checkLimit(languages, *gate.failUnder, gate.allowOutdated);
        if(!gate.allowUndescribed)
            isPassed = checkDescribed(project, undescribed) && isPassed;
    }
    return !status.areFilesFine ? Failure : isPassed ? Success : GateFailure;
}

}}
