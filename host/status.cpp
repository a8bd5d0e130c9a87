#include <algorithm>
#include <string>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "JsonList.h"
#include "Messages.h"
#include "Table.h"
#include "Translations.h"
#include "undescribedTypes.h"

namespace OrrelinEngine { namespace Host {

namespace {

struct LanguageStatus {
    ProjectLanguage language;
    std::size_t translated;
    std::size_t total;

    std::size_t missing() const { return total - translated; }
    double share() const {
        return total ? double(translated) / double(total) : 1.0;
    }
    /* Rounded down to tenths, so that 100 means that all is there */
    double percent() const {
        return total ? double(translated * 1000 / total) / 10.0 : 100.0;
    }
};

/* Of the default language, what the project has */
std::size_t sourceCount(const std::vector<Term>& terms) {
    return std::size_t(std::count_if(terms.begin(), terms.end(),
        [&](const Term& term) { return term.source.data() != nullptr; }));
}

/* Whether all files could be read */
bool findStatus(Project& project, std::vector<LanguageStatus>& out) {
    const std::vector<Term> terms = project.translatedTerms();
    TranslatedTerms translated;
    const bool succeeded = findTranslated(project, terms, translated);
    out.clear();
    for(const ProjectLanguage& language: project.languages()) {
        const std::vector<bool>& marks = translated[language.code];
        out.push_back({language,
            language.isDefault
                ? sourceCount(terms)
                : std::size_t(std::count(marks.begin(), marks.end(), true)),
            terms.size()});
    }
    return succeeded;
}

void printJson(const std::vector<LanguageStatus>& languages) {
    JsonList out;
    for(const LanguageStatus& status: languages) {
        out.beginObject();
        out.add("code", status.language.code);
        out.add("name", status.language.name);
        out.add("default", status.language.isDefault);
        out.add("translated", status.translated);
        out.add("missing", status.missing());
        out.add("total", status.total);
        out.add("percent", status.percent());
        out.endObject();
    }
    out.print();
}

void printTable(const std::vector<LanguageStatus>& languages) {
    Table table{{{"code"}, {"language"}, {"translated", ColumnKind::Number},
        {"missing", ColumnKind::Number}, {"total", ColumnKind::Number},
        {"", ColumnKind::Number}, {"", ColumnKind::Bar}}};
    for(const LanguageStatus& status: languages) {
        const Style style = status.missing() ? Style::Bad : Style::Good;
        table.add({{status.language.code},
            {status.language.isDefault ? status.language.name + " (default)"
                                       : status.language.name},
            {Utility::format("{}", status.translated)},
            {Utility::format("{}", status.missing())},
            {Utility::format("{}", status.total)},
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

bool checkLimit(const std::vector<LanguageStatus>& languages, double limit) {
    std::string below;
    for(const LanguageStatus& status: languages) {
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
    std::vector<LanguageStatus> languages;
    UndescribedTypes undescribed;
    bool areFilesFine = true;
    if(!project.read(options, [&](Project& p) {
           areFilesFine = findStatus(p, languages);
           undescribed = findUndescribedTypes(p);
           return true;
       }))
        return Failure;
    if(json)
        printJson(languages);
    else if(languages.empty())
        printLine("The project has no languages yet; 'add' gives it one.");
    else
        printTable(languages);
    printHints(hints(project, undescribed), json);
    bool isPassed = true;
    if(gate.failUnder) {
        isPassed = checkLimit(languages, *gate.failUnder);
        if(!gate.allowUndescribed)
            isPassed = checkDescribed(project, undescribed) && isPassed;
    }
    return !areFilesFine ? Failure : isPassed ? Success : GateFailure;
}

}}
