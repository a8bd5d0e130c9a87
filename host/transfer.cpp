#include <algorithm>
#include <vector>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "LanguageFiles.h"
#include "Messages.h"
#include "Table.h"
#include "Translations.h"
#include "undescribedTypes.h"

namespace OrrelinEngine { namespace Host {

namespace {

void printImport(Project& project, const std::vector<ProjectLanguage>& before,
    std::size_t changedCount, bool areFilesFine) {
    const LanguageTranslations& all = project.localization().translations;
    const std::vector<Term> terms = project.translatedTerms();
    Table table{
        {{"code"}, {"language"}, {"terms set", ColumnKind::Number}, {}}};
    for(const ProjectLanguage& language: project.languages()) {
        const bool isNew = std::none_of(
            before.begin(), before.end(), [&](const ProjectLanguage& old) {
                return old.code == language.code;
            });
        Containers::String note;
        if(all.find(language.code) == all.end())
            note = areFilesFine ? "no file" : "not read";
        else if(isNew)
            note = "added to the project";
        else if(language.isDefault && changedCount)
            note = Utility::format(
                "{} changed in the project", counted(changedCount, "text"));
        table.add({{language.code}, {language.name},
            {Utility::format("{} of {}",
                project.translationCount(terms, language.code), terms.size())},
            {note, Style::Bold}});
    }
    table.print();
}

void printChanges(Project& project, const std::vector<SourceChange>& changes) {
    for(const SourceChange& change: changes) {
        printLine();
        printLine(change.key, Style::Bold);
        printLine("  from: " + change.before);
        printLine("  to:   " + project.source(change.path));
    }
}

/* Nothing is saved, but the user sees that it could be taken back */
bool undoImport(Project& project, const std::vector<SourceChange>& changes) {
    if(changes.empty()) {
        printLine("Dry run: nothing was saved.");
        return true;
    }
    project.changeManager().undoLast();
    for(const SourceChange& change: changes)
        if(project.source(change.path) != change.before) {
            fail("the changed texts couldn't be taken back");
            return false;
        }
    printLine(Utility::format("Dry run: {} taken back by one undo, nothing was "
                              "saved.",
        counted(changes.size(), "changed text")));
    return true;
}

struct Import {
    std::vector<ProjectLanguage> languages;
    std::vector<SourceChange> changes;
    bool areFilesFine = true;
};

/* Whether there was something to import, if only faulty files */
bool import(Project& project, Import& out) {
    out = {};
    out.languages = project.languages();
    /* The first language to be added becomes the default one, which shouldn't
       depend on the order of files in a folder */
    if(out.languages.empty()) {
        fail("the project has no languages yet; first 'add' the language of "
             "its own texts");
        return false;
    }
    const Containers::String path = project.target().path;
    if(!Utility::Path::exists(path)) {
        fail(Utility::format("there is no {}; 'export' writes it", path));
        return false;
    }
    out.areFilesFine = importAll(project, out.changes);
    return true;
}

bool saveImport(Project& project, const Import& import) {
    if(import.changes.empty() &&
        project.languages().size() == import.languages.size()) {
        printLine("Nothing to change in the project.");
        return true;
    }
    if(!project.write() || !project.commit())
        return false;
    printLine(Utility::format("Saved {}", project.file()));
    return true;
}

/* Codes of the languages to export; all go into an archive, as it's written
   anew. Empty if there's something wrong, which was printed. */
Codes exportedCodes(Project& project, const Codes& named) {
    for(const Containers::String& code: named)
        if(!project.checkLanguage(code))
            return {};
    Codes out = named;
    if(out.empty() || project.target().isArchive) {
        out.clear();
        for(const ProjectLanguage& language: project.languages())
            out.push_back(language.code);
    }
    if(out.empty())
        fail("the project has no languages yet; 'add' gives it one");
    for(const Containers::String& code: out)
        if(!isFileName(code))
            return {};
    return out;
}

/* Whether the languages have files where the project had them before, too */
bool isBesideFormer(Project& project, const Codes& codes) {
    const LanguageSource former = project.formerTarget();
    return former.isArchive
        ? Utility::Path::exists(former.path)
        : std::any_of(
              codes.begin(), codes.end(), [&](const Containers::String& code) {
                  return Utility::Path::exists(
                      Utility::Path::join(former.path, code + ".json"));
              });
}

void printExport(
    Project& project, const Codes& codes, const Losses& losses, bool isMore) {
    Table table{{{"file"}, {"texts", ColumnKind::Number},
        {"to translate", ColumnKind::Number}}};
    const std::vector<Term> terms = project.translatedTerms();
    for(const Containers::String& code: codes) {
        /* All texts of the project are in the default language's file */
        const std::size_t count = code == project.defaultLanguage()
            ? terms.size()
            : project.translationCount(terms, code);
        table.add({{code + ".json"}, {Utility::format("{}", count)},
            {Utility::format("{}", terms.size() - count)}});
    }
    table.print();
    printLine();
    if(isMore)
        printLine("An archive has the files of all languages.");
    if(losses.replaced)
        printLine(Utility::format("{} in {}.json replaced by the project's.",
            counted(losses.replaced, "text"), project.defaultLanguage()));
    if(losses.dropped)
        printLine(Utility::format("{} dropped, such as {}.",
            counted(losses.dropped, "text"), losses.example));
    printLine(Utility::format("Wrote {} to {}",
        counted(codes.size(), "language file"), project.target().path));
    if(isBesideFormer(project, codes))
        printLine(Utility::format("{} stays as it is and isn't read for these "
                                  "languages anymore",
            project.formerTarget().path));
}

}

int importFiles(const ProjectOptions& options, bool dryRun) {
    Project project;
    Import result;
    const bool isDone = dryRun
        ? project.read(options, [&](Project& p) { return import(p, result); })
        : project.openForWriting(options, "import") && import(project, result);
    if(!isDone)
        return Failure;
    printImport(
        project, result.languages, result.changes.size(), result.areFilesFine);
    printChanges(project, result.changes);
    printLine();
    const bool succeeded = dryRun ? undoImport(project, result.changes)
                                  : saveImport(project, result);
    return succeeded && result.areFilesFine ? Success : Failure;
}

int exportFiles(const ProjectOptions& options, const Codes& named, bool prune,
    bool allowUndescribed) {
    Project project;
    if(!project.openForWriting(options, "export"))
        return Failure;
    Codes codes = exportedCodes(project, named);
    Losses losses;
    if(codes.empty())
        return Failure;
    if(!readReplaced(project, codes, losses))
        return fail("nothing was written, as what can't be read would be "
                    "lost; repair it or move it away first");
    if(!allowUndescribed &&
        mayLoseUndescribed(project, losses.dropped, losses.example))
        return Failure;
    if(losses.dropped && !prune)
        return fail(
            Utility::format("{} would be lost, such as {}; the project has no "
                            "place for such texts, --prune drops them",
                counted(losses.dropped, "text"), losses.example));
    if(!project.writeFiles(codes) || !project.commit())
        return Failure;
    printExport(
        project, codes, losses, !named.empty() && named.size() != codes.size());
    return Success;
}

}}
