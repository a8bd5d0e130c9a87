#include <algorithm>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "JsonList.h"
#include "LanguageFiles.h"
#include "Messages.h"
#include "Table.h"
#include "Tools/LocalizationTools.h"

namespace OrrelinEngine { namespace Host {

namespace {

void printJson(Project& project) {
    JsonList out;
    for(const auto& term: project.localization().terms) {
        out.beginObject();
        out.add("key", term.first);
        out.add("text", project.source(term.second));
        out.add("path", term.second);
        out.add("translate",
            LocalizationTools::termExists(project.editor(), term.first));
        out.endObject();
    }
    out.print();
}

void printTable(Project& project) {
    Table table{{{"key"}, {"translate"}, {"text"}, {"path"}}};
    std::size_t translated = 0;
    for(const auto& term: project.localization().terms) {
        const bool isTranslated =
            LocalizationTools::termExists(project.editor(), term.first);
        translated += isTranslated;
        const Style style = isTranslated ? Style::Plain : Style::Dim;
        table.add({{term.first, style}, {isTranslated ? "yes" : "no", style},
            {project.source(term.second), style}, {term.second, Style::Dim}});
    }
    table.print();

    const std::size_t count = project.localization().terms.size();
    printLine();
    printLine(Utility::format(
        "{}, {} to translate", counted(count, "term"), translated));
}

/* Stores the key beside each value that has the old one, which may be several
   that share it */
std::size_t storeKey(Project& project, Containers::StringView oldKey,
    Containers::StringView newKey) {
    ChangeManager& changes = project.changeManager();
    std::size_t count = 0;
    changes.beginGroup();
    for(const auto& value: project.strings()) {
        if(value.second != oldKey)
            continue;
        changes.pushChange(value.first + "_term", newKey, false);
        ++count;
    }
    changes.commit();
    return count;
}

bool checkKeys(Project& project, Containers::StringView oldKey,
    Containers::StringView newKey, bool merge) {
    const TermPathMap& terms = project.localization().terms;
    Containers::String fault;
    if(terms.find(oldKey) == terms.end())
        fault = Utility::format("the project has no term '{}'", oldKey);
    else if(newKey.isEmpty())
        fault = "the new key is empty";
    else if(newKey == oldKey)
        fault = "the new key is the old one";
    else if(!merge && terms.find(newKey) != terms.end())
        fault = Utility::format(
            "the project has a term '{}' already; with "
            "--merge both share its translations, those of '{}' are dropped",
            newKey, oldKey);
    if(!fault.isEmpty())
        fail(fault);
    return fault.isEmpty();
}

/* Whether the files with the old key are just what the project has, those
   included that couldn't be read */
bool canRewrite(Project& project, Codes codes) {
    for(const ProjectLanguage& language: project.languages()) {
        if(!isFileName(language.code))
            return false;
        if(std::find(codes.begin(), codes.end(), language.code) == codes.end())
            codes.push_back(language.code);
    }
    const Containers::Optional<Losses> losses = lossesOf(project, codes);
    if(!losses)
        return false;
    if(losses->dropped)
        fail(Utility::format(
            "{} would be lost, such as {}; export with "
            "--prune first to drop what the project has no place for",
            counted(losses->dropped, "text"), losses->example));
    else if(losses->replaced)
        fail(Utility::format("{} in the default language's file differ from "
                             "the project; import or export them first",
            counted(losses->replaced, "text")));
    return !losses->dropped && !losses->replaced;
}

}

int listTerms(const ProjectOptions& options, bool json) {
    Project project;
    if(!project.open(options))
        return Failure;
    if(json)
        printJson(project);
    else
        printTable(project);
    return Success;
}

int renameTerm(const ProjectOptions& options, Containers::StringView oldKey,
    Containers::StringView newKey, bool merge) {
    Project project;
    if(!project.open(options) || !checkKeys(project, oldKey, newKey, merge) ||
        !project.readTranslations())
        return Failure;
    const Codes codes = languagesWithFiles(project);
    if(!canRewrite(project, codes))
        return Failure;

    const std::size_t count = storeKey(project, oldKey, newKey);
    LocalizationTools::renameTerm(
        project.editor(), oldKey, newKey, project.strings());
    if(!project.save())
        return Failure;
    printLine(Utility::format("Renamed '{}' to '{}' ({}) in {}", oldKey, newKey,
        counted(count, "value"), project.file()));
    if(codes.empty())
        return Success;
    if(!writeFiles(project, codes))
        return Failure;
    printLine(Utility::format("Updated {} in {}",
        counted(codes.size(), "language file"), project.filesPath()));
    return Success;
}

}}
