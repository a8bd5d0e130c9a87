#include <algorithm>
#include <utility>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "Tools/LocalizationTools.h"
#include "project/LanguageFiles.h"
#include "project/SourceMerge.h"
#include "project/Translations.h"
#include "project/undescribedTypes.h"
#include "terminal/JsonList.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

void printJson(Project& project) {
    JsonList out;
    for(const Term& term: project.terms()) {
        out.beginObject();
        out.add("key", term.key);
        out.add("text", term.source);
        out.add("path", term.path);
        out.add("translate", term.isTranslated);
        out.endObject();
    }
    out.print();
}

void printTable(Project& project) {
    Table table{{{"key"}, {"translate"}, {"text"}, {"path"}}};
    const std::vector<Term> terms = project.terms();
    table.print([&](const Table::RowFunction& pass) {
        for(const Term& term: terms) {
            const Style style = term.isTranslated ? Style::Plain : Style::Dim;
            /* The texts stay, so they aren't copied */
            const auto view = [](Containers::StringView text) {
                return Containers::String::nullTerminatedView(text);
            };
            pass({{view(term.key), style},
                {term.isTranslated ? "yes" : "no", style},
                {view(term.source), style}, {view(term.path), Style::Dim}});
        }
    });

    const auto translated = std::count_if(terms.begin(), terms.end(),
        [](const Term& term) { return term.isTranslated; });
    printLine();
    printLine(Utility::format(
        "{}, {} to translate", counted(terms.size(), "term"), translated));
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

/* Whether the files with the old key are just what the project has. Puts the
   codes of those that are there into the list. */
bool canRewrite(Project& project, Codes& codes, ReplacedFiles& replaced) {
    if(!readReplaced(project, codes, replaced)) {
        fail("nothing was renamed, as what can't be read would be lost; repair "
             "it or move it away first");
        return false;
    }
    const Losses& losses = replaced.losses;
    rememberSources(project, replaced.differences);
    const SourceMerge sources =
        mergeSources(std::move(replaced.differences), {}, false);
    const std::size_t changedCount =
        sources.changedInFile.size() + sources.conflicts.size();
    if(mayLoseUndescribed(project, losses.dropped, losses.example))
        return false;
    if(losses.dropped)
        fail(Utility::format(
            "{} would be lost, such as {}; export with "
            "--prune first to drop what the project has no place for",
            counted(losses.dropped, "text"), losses.example));
    else if(changedCount)
        fail(Utility::format("{} in the default language's file differ from "
                             "the project; import or export them first",
            counted(changedCount, "text")));
    else
        return std::all_of(codes.begin(), codes.end(), isFileName);
    return false;
}

/* The translations go with the key, and so does what they were made from */
void renameOrigins(Origins& origins, Containers::StringView oldKey,
    const Containers::String& newKey) {
    for(auto& language: origins) {
        const auto found = language.second.find(oldKey);
        if(found == language.second.end())
            continue;
        language.second.emplace(newKey, found->second);
        language.second.erase(found);
    }
}

}

namespace {

/* Both keys' texts may differ, and only one of them is the key's in the end. The
   new key's translations stay if it has some. */
void keepOrigins(Project& project, const Codes& codes,
    Containers::StringView oldKey, const Containers::String& newKey,
    Origins& origins) {
    const TermPathMap& terms = project.localization().terms;
    const auto source = [&](Containers::StringView key) {
        const auto term = terms.find(key);
        return Tracking::TranslationRecord::originOf(term == terms.end()
                ? Containers::StringView{}
                : project.source(term->second));
    };
    for(const Containers::String& code: codes) {
        TranslationMap& translations =
            project.localization().translations[code];
        const auto kept = translations.find(newKey);
        auto& known = origins[code];
        if(kept != translations.end() && kept->second) {
            known.emplace(newKey, source(newKey));
            continue;
        }
        const auto moved = known.find(oldKey);
        known[newKey] = moved == known.end() ? source(oldKey) : moved->second;
    }
}

}

int listTerms(const ProjectOptions& options, bool json) {
    Project project;
    if(!project.read(options))
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
    Codes codes;
    ReplacedFiles replaced;
    if(!project.openForWriting(options, "rename") ||
        !checkKeys(project, oldKey, newKey, merge) ||
        !canRewrite(project, codes, replaced))
        return Failure;

    if(merge)
        keepOrigins(project, codes, oldKey, newKey, replaced.origins);
    const std::size_t count = storeKey(project, oldKey, newKey);
    LocalizationTools::renameTerm(
        project.editor(), oldKey, newKey, project.strings());
    renameOrigins(replaced.origins, oldKey, newKey);
    /* Of two texts with one key, gathering decides which one is in the files */
    LocalizationTools::gatherStrings(project.editor(), project.strings());
    recordExport(project, codes, replaced.origins);
    if(!project.write() ||
        (!codes.empty() &&
            (!project.writeFiles(codes) || !project.writeRecord())) ||
        !project.commit())
        return Failure;
    printLine(Utility::format("Renamed '{}' to '{}' ({}) in {}", oldKey, newKey,
        counted(count, "value"), project.file()));
    if(!codes.empty())
        printLine(Utility::format("Updated {} in {}",
            counted(codes.size(), "language file"), project.target().path));
    return Success;
}

}}
