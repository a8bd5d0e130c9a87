#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "project/ImportReader.h"
#include "project/LanguageFiles.h"
#include "project/SourceMerge.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

struct Import {
    std::set<Containers::String, StrLess> languagesBefore;
    std::vector<ImportedFile> files;
    SourceMerge sources;
    std::size_t termCount = 0;
    bool areFilesFine = true;
    bool isFirst = false;
};

bool hasFiles(Project& project) {
    if(!project.checkArchives())
        return false;
    const Containers::String unread = project.unreadLooseFile();
    if(!unread.isEmpty())
        fail(Utility::format("{} isn't read, as the files are in {}", unread,
            project.place().path));
    for(const LanguageSource& source: project.sources())
        if(project.isThere(source.path))
            return true;
    fail(Utility::format(
        "there is no {}; 'export' writes it", project.target().path));
    return false;
}

/* Whether there was something to import, if only faulty files */
bool import(Project& project, const ImportOptions& options, Import& out) {
    out = {};
    for(const Containers::String& code: options.codes)
        if(!isFileName(code))
            return false;
    for(const ProjectLanguage& language: project.languages())
        out.languagesBefore.insert(language.code);
    Codes added;
    if(!project.provideDefaultLanguage(added) ||
        !options.choice.check(project) || !hasFiles(project))
        return false;
    /* Which file comes first mustn't decide what the texts are in */
    if(project.languages().empty()) {
        fail("the project has no languages yet; first 'add' the language of "
             "its own texts");
        return false;
    }

    out.isFirst = project.record().isEmpty();
    const ProjectTexts all{project};
    ImportReader reader{project, all.texts, options.codes};
    out.areFilesFine =
        readTexts(project, all.texts, options.allowsEmpty, reader);
    /* Otherwise it would be lost what the translations of a file that can't be
       read were made from */
    if(!out.areFilesFine)
        project.record().keepSources();
    for(const Containers::String& code: options.codes)
        if(!reader.hasFile(code) && out.areFilesFine) {
            fail(
                Utility::format("there is no file of the language '{}'", code));
            return false;
        }
    project.setRecordedPlace(project.place());
    out.termCount = std::size_t(std::count_if(all.terms.begin(),
        all.terms.end(), [](const Term& term) { return term.isTranslated; }));
    out.sources =
        mergeSources(std::move(reader.differences()), options.choice, true);
    if(out.sources.conflicts.empty()) {
        takeSources(project, out.sources.taken);
        reader.markTaken(out.sources.taken, out.isFirst);
    }
    out.files = reader.files();
    return true;
}

void printImport(Project& project, const Import& import, const Codes& codes) {
    std::map<Containers::StringView, const ImportedFile*, StrLess> files;
    for(const ImportedFile& file: import.files)
        files[file.code] = &file;
    Table table{{{"code"}, {"language"}, {"terms set", ColumnKind::Number},
        {"outdated", ColumnKind::Number}, {}}};
    for(const ProjectLanguage& language: project.languages()) {
        const auto found = files.find(language.code);
        const ImportedFile* const file =
            found == files.end() ? nullptr : found->second;
        if(!file && !codes.empty() &&
            std::find(codes.begin(), codes.end(), language.code) == codes.end())
            continue;
        Containers::String note;
        if(!file)
            note = import.areFilesFine ? "no file" : "not read";
        else if(!import.languagesBefore.count(language.code))
            note = "added to the project";
        else if(language.isDefault && !import.sources.taken.empty())
            note = Utility::format("{} changed in the project",
                counted(import.sources.taken.size(), "text"));
        table.add({{language.code}, {language.name},
            {Utility::format(
                "{} of {}", file ? file->translated : 0, import.termCount)},
            {Utility::format("{}", file ? file->outdated : 0)},
            {note, Style::Bold}});
    }
    table.print();
}

void printNotes(Project& project, const Import& import) {
    for(const ImportedFile& file: import.files)
        if(file.equal)
            printLine(Utility::format(
                "{} in {}.json the same as in the project's own language.",
                counted(file.equal, "text") +
                    (file.equal == 1 ? " is" : " are"),
                file.code));
    if(import.sources.staleCount)
        printLine(Utility::format("{} newer in the project than in {}.json; "
                                  "'export' writes {}.",
            counted(import.sources.staleCount, "text") +
                (import.sources.staleCount == 1 ? " is" : " are"),
            project.defaultLanguage(),
            import.sources.staleCount == 1 ? "it" : "them"));
    if(import.isFirst && !import.files.empty())
        printLine(Utility::format(
            "There was no record of what the translations were made from yet. "
            "It begins with this import in {}.",
            project.recordFile()));
}

/* Nothing is saved, but the user sees that it could be taken back */
bool undoImport(Project& project, const Import& import) {
    const std::vector<SourceDifference>& changes = import.sources.taken;
    if(changes.empty()) {
        printLine("Dry run: nothing was saved.");
        return true;
    }
    project.changeManager().undoLast();
    for(const SourceDifference& change: changes)
        if(project.source(change.path) != change.inProject) {
            fail("the changed texts couldn't be taken back");
            return false;
        }
    printLine(Utility::format("Dry run: {} taken back by one undo, nothing was "
                              "saved.",
        counted(changes.size(), "changed text")));
    return true;
}

bool saveImport(Project& project, const Import& import) {
    const bool isChanged = !import.sources.taken.empty() ||
        project.languages().size() != import.languagesBefore.size();
    if(project.hasReadFault()) {
        fail("nothing was saved");
        return false;
    }
    if(isChanged && !project.write())
        return false;
    /* If there's nothing to save, a file with a fault leaves all as it is. No
       file at all begins no record. */
    if((isChanged || (import.areFilesFine && !import.files.empty())) &&
        (!project.writeRecord() || !project.commit()))
        return false;
    printLine(isChanged ? "Saved " + project.file()
                        : Containers::String{"Nothing to change in the "
                                             "project."});
    return true;
}

}

int importFiles(const ProjectOptions& project, const ImportOptions& options) {
    Project p;
    Import result;
    const bool isDone = options.dryRun
        ? p.read(project, [&](Project&) { return import(p, options, result); })
        : p.openForWriting(project, "import") && import(p, options, result);
    if(!isDone)
        return Failure;
    if(!result.sources.conflicts.empty())
        return failOnConflicts(p, result.sources.conflicts);
    printImport(p, result, options.codes);
    printTaken(result.sources.taken);
    printLine();
    printNotes(p, result);
    const bool succeeded =
        options.dryRun ? undoImport(p, result) : saveImport(p, result);
    return succeeded && result.areFilesFine ? Success : Failure;
}

}}
