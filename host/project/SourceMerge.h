#ifndef Orrelin_host_project_SourceMerge_h
#define Orrelin_host_project_SourceMerge_h

#include <map>
#include <string>

#include "Translations.h"

namespace OrrelinEngine { namespace Host {

enum class Side { File, Project };

/* Who is right where a source text was changed, as the user decided */
class SourceChoice {
public:
    /* Adds "file" or "project", for all or with a colon and a key. Returns
       false if it's neither. */
    bool add(const std::string& choice);

    /* Whether the user decided about a key, as one of all or by its name */
    bool has(Containers::StringView key) const;
    bool hasNamed(Containers::StringView key) const;

    /* Only if the user did */
    Side of(Containers::StringView key) const;

    /* Prints keys that aren't among the project's terms and returns false */
    bool check(Project& project) const;

private:
    const Side* find(Containers::StringView key) const;

    std::map<Containers::String, Side, StrLess> _keys;
    bool _hasDefault = false;
    Side _default = Side::File;
};

/* The differences between the default language's file and the project, by what
   is to be done */
struct SourceMerge {
    /* Texts of the file for the project */
    std::vector<SourceDifference> taken;
    /* Texts that were only changed in the file, if nobody decided */
    std::vector<SourceDifference> changedInFile;
    /* Texts about which somebody has to decide */
    std::vector<SourceDifference> conflicts;
    /* How many texts of the file are older than the project's, and how many
       others the project's are to replace */
    std::size_t staleCount = 0;
    std::size_t replacedCount = 0;
};

/* Whether the file's text is none, or only the word None that tools write for
   a missing one */
bool isBlank(const SourceDifference& difference);

/* With takesFile, a text that was only changed in the file is taken from it */
SourceMerge mergeSources(std::vector<SourceDifference>&& differences,
    const SourceChoice& choice, bool takesFile);

/* Changes the project in one undo step, and remembers the texts before */
void takeSources(Project& project, const std::vector<SourceDifference>& taken);

/* Prints the project's texts before and after */
void printTaken(const std::vector<SourceDifference>& taken);

/* Prints that nothing was written because of so many conflicts, and what to do
   about them or the one of the key. Returns the exit code. */
int failUndecided(std::size_t count, Containers::StringView key);

/* Prints both texts of each, the first ones of many, and what to do. Returns
   the exit code. */
int failOnConflicts(
    Project& project, const std::vector<SourceDifference>& conflicts);

}}

#endif
