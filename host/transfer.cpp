#include <algorithm>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "LanguageFiles.h"
#include "Messages.h"
#include "Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* A text of the project, as it was before */
struct Source {
    Containers::StringView key;
    Containers::StringView path;
    Containers::String text;
};

std::vector<Source> sources(Project& project) {
    std::vector<Source> out;
    for(const auto& term: project.localization().terms)
        out.push_back({term.first, term.second, project.source(term.second)});
    return out;
}

std::vector<Source> changedSources(
    Project& project, const std::vector<Source>& before) {
    std::vector<Source> out;
    for(const Source& source: before)
        if(project.source(source.path) != source.text)
            out.push_back(source);
    return out;
}

void printImport(Project& project, const std::vector<ProjectLanguage>& before,
    std::size_t changedCount) {
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
            note = project.filesAreFine() ? "no file" : "not read";
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

void printChanges(Project& project, const std::vector<Source>& changed) {
    for(const Source& source: changed) {
        printLine();
        printLine(source.key, Style::Bold);
        printLine("  from: " + source.text);
        printLine("  to:   " + project.source(source.path));
    }
}

/* Nothing is saved, but the user sees that it could be taken back */
int undoImport(Project& project, const std::vector<Source>& before,
    std::size_t changedCount) {
    if(!changedCount) {
        printLine("Dry run: nothing was saved.");
        return Success;
    }
    project.changeManager().undoLast();
    if(!changedSources(project, before).empty())
        return fail("the changed texts couldn't be taken back");
    printLine(Utility::format("Dry run: {} taken back by one undo, nothing was "
                              "saved.",
        counted(changedCount, "changed text")));
    return Success;
}

/* Codes of the languages to export; all go into an archive, as it's written
   anew. Empty if there's something wrong, which was printed. */
Codes exportedCodes(Project& project, const Codes& named) {
    for(const Containers::String& code: named)
        if(!project.checkLanguage(code))
            return {};
    Codes out = named;
    if(out.empty() || project.isZip()) {
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
        counted(codes.size(), "language file"), project.filesPath()));
}

}

int importFiles(const ProjectOptions& options, bool dryRun) {
    Project project;
    if(!project.open(options))
        return Failure;
    const std::vector<ProjectLanguage> languages = project.languages();
    /* The first language to be added becomes the default one, which shouldn't
       depend on the order of files in a folder */
    if(languages.empty())
        return fail("the project has no languages yet; first 'add' the "
                    "language of its own texts");
    if(!Utility::Path::exists(project.filesPath()))
        return fail(Utility::format(
            "there is no {}; 'export' writes it", project.filesPath()));

    const std::vector<Source> before = sources(project);
    project.importFiles();
    const std::vector<Source> changed = changedSources(project, before);
    printImport(project, languages, changed.size());
    printChanges(project, changed);
    printLine();

    int result = Success;
    if(dryRun)
        result = undoImport(project, before, changed.size());
    else if(changed.empty() && project.languages().size() == languages.size())
        printLine("Nothing to change in the project.");
    else if(project.save())
        printLine(Utility::format("Saved {}", project.file()));
    else
        result = Failure;
    return project.filesAreFine() ? result : Failure;
}

int exportFiles(const ProjectOptions& options, const Codes& named, bool prune) {
    Project project;
    if(!project.open(options))
        return Failure;
    const Codes codes = exportedCodes(project, named);
    if(codes.empty() || !project.readTranslations())
        return Failure;

    const Containers::Optional<Losses> losses = lossesOf(project, codes);
    if(!losses)
        return Failure;
    if(losses->dropped && !prune)
        return fail(
            Utility::format("{} would be lost, such as {}; the project has no "
                            "place for such texts, --prune drops them",
                counted(losses->dropped, "text"), losses->example));
    if(!writeFiles(project, codes))
        return Failure;
    printExport(project, codes, *losses,
        !named.empty() && named.size() != codes.size());
    return Success;
}

}}
