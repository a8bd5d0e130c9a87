#include "FileExport.h"

#include <algorithm>
#include <utility>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "project/LanguageFiles.h"
#include "project/brokenKeys.h"
#include "project/undescribedTypes.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* Codes of the languages to export. All go into an archive, as it's written
   anew, and all have to follow texts that have other keys now. Empty if there's
   something wrong, which was printed. */
Codes exportedCodes(Project& project, const Codes& named) {
    for(const Containers::String& code: named)
        if(!project.checkLanguage(code))
            return {};
    Codes out = named;
    /* Otherwise the others would be read from the place before the last one */
    const bool isElsewhere = project.place().path != project.target().path;
    if(project.hasReadFault())
        return {};
    if(out.empty() || project.target().isArchive || isElsewhere ||
        hasMovedTexts(project)) {
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

/* Translations were made from the texts that the project has before it takes
   others */
void keepOrigins(const Codes& codes, const std::vector<SourceDifference>& taken,
    Origins& origins) {
    for(const Containers::String& code: codes)
        for(const SourceDifference& difference: taken)
            origins[code].emplace(difference.key,
                Tracking::TranslationRecord::originOf(difference.inProject));
}

/* Whether nothing that a person wrote into a file would be written over.
   Otherwise prints it and sets the exit code. */
bool canWrite(Project& project, const SourceMerge& sources, int& result) {
    if(!sources.conflicts.empty()) {
        result = failOnConflicts(project, sources.conflicts);
        return false;
    }
    /* An import asks whether such a text is meant */
    const auto blank =
        std::find_if(sources.taken.begin(), sources.taken.end(), isBlank);
    if(blank != sources.taken.end()) {
        fail(Utility::format(
            "nothing was written, as '{}' is {} in {}.json; 'import "
            "--allow-empty' takes it, --take project:{} keeps the project's",
            blank->key, blank->inFile.isEmpty() ? "empty" : "the word None",
            project.defaultLanguage(), blank->key));
        result = Conflict;
        return false;
    }
    if(sources.changedInFile.empty())
        return true;
    const bool hasBlank = std::any_of(
        sources.changedInFile.begin(), sources.changedInFile.end(), isBlank);
    fail(Utility::format(
        "{} changed in {}.json, such as '{}'; 'import{}' takes the file's "
        "first, --take project keeps the project's",
        counted(sources.changedInFile.size(), "text") +
            (sources.changedInFile.size() == 1 ? " was" : " were"),
        project.defaultLanguage(), sources.changedInFile.front().key,
        hasBlank ? " --allow-empty" : ""));
    result = Conflict;
    return false;
}

void printFiles(Project& project, const Codes& codes,
    const std::vector<LanguageSource>& sources) {
    const Containers::String target = project.target().path;
    printLine(Utility::format(
        "Wrote {} to {}", counted(codes.size(), "language file"), target));
    for(const LanguageSource& source: sources) {
        const auto exists = [&](const Containers::String& code) {
            return Utility::Path::exists(
                Utility::Path::join(source.path, code + ".json"));
        };
        if(source.path != target &&
            (source.isArchive
                    ? Utility::Path::exists(source.path)
                    : std::any_of(codes.begin(), codes.end(), exists)))
            printLine(Utility::format("{} stays as it is and isn't read for "
                                      "these languages anymore",
                source.path));
    }
}

}

int FileExport::read(Project& project, const ExportOptions& options) {
    codes = exportedCodes(project, options.codes);
    if(codes.empty())
        return Failure;
    if(!project.checkArchives() || !checkGeneratedKeys(project))
        return Failure;
    before = project.sources();
    isFirst = project.record().isEmpty();
    if(!readReplaced(project, codes, replaced))
        return fail("nothing was written, as what can't be read would be "
                    "lost; repair it or move it away first");
    if(!project.unreadFile().isEmpty() && !options.prune)
        return fail("nothing was written, as what isn't read would be lost; "
                    "'export --prune' replaces it");
    int result = Success;
    rememberSources(project, replaced.differences);
    sources =
        mergeSources(std::move(replaced.differences), options.choice, false);
    if(!canWrite(project, sources, result))
        return result;
    if(!options.allowUndescribed &&
        mayLoseUndescribed(
            project, replaced.losses.dropped, replaced.losses.example))
        return Failure;
    if(replaced.losses.dropped && !options.prune)
        return fail(Utility::format(
            "{} would be lost, such as {}; the project has no "
            "place for such texts, 'export --prune' drops them",
            counted(replaced.losses.dropped, "text"), replaced.losses.example));
    return Success;
}

bool FileExport::write(Project& project, bool isProjectChanged) {
    keepOrigins(codes, sources.taken, replaced.origins);
    const Containers::String target = project.target().path;
    takeSources(project, sources.taken);
    /* What's in that place wasn't looked at for losses */
    if(project.target().path != target &&
        project.isThere(project.target().path)) {
        fail(Utility::format("nothing was written, as {} is there already; "
                             "'import' takes the project's name first",
            project.target().path));
        return false;
    }
    termCount = recordExport(project, codes, replaced.origins);
    return ((sources.taken.empty() && !isProjectChanged) || project.write()) &&
        project.writeFiles(codes) && project.writeRecord() && project.commit();
}

void FileExport::print(Project& project) const {
    const std::size_t stale = sources.staleCount + sources.replacedCount;
    if(stale)
        printLine(Utility::format("{} in {}.json replaced by the project's.",
            counted(stale, "text"), project.defaultLanguage()));
    if(!sources.taken.empty())
        printLine(Utility::format("{} taken from {}.json. Saved {}",
            counted(sources.taken.size(), "text"), project.defaultLanguage(),
            project.file()));
    if(replaced.movedCount)
        printLine(Utility::format("{} other keys now, and the translations "
                                  "went with them.",
            counted(replaced.movedCount, "text") +
                (replaced.movedCount == 1 ? " has" : " have")));
    if(replaced.losses.emptied)
        printLine(Utility::format(
            "{} without meaning, empty or the word None, became null.",
            counted(replaced.losses.emptied, "translation")));
    if(replaced.losses.dropped)
        printLine(Utility::format("{} dropped, such as {}.",
            counted(replaced.losses.dropped, "text"), replaced.losses.example));
    if(isFirst)
        printLine(Utility::format("From now on, {} knows what the translations "
                                  "were made from.",
            project.recordFile()));
    printFiles(project, codes, before);
}

}}
