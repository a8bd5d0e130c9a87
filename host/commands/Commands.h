#ifndef Orrelin_host_commands_Commands_h
#define Orrelin_host_commands_Commands_h

#include <optional>
#include <string>

#include "project/SourceMerge.h"

namespace OrrelinEngine { namespace Host {

/* The commands. Each returns the exit code of the program. */

int listTerms(const ProjectOptions& options, bool json);

/* With merge, another term may have the new key already */
int renameTerm(const ProjectOptions& options, Containers::StringView oldKey,
    Containers::StringView newKey, bool merge);

int listLanguages(Containers::StringView filter, bool json);

int addLanguages(const ProjectOptions& options, const Codes& codes);

int removeLanguages(const ProjectOptions& options, const Codes& codes);

/* What `status` demands of a project */
struct Gate {
    /* Percentage that each language has to reach; nothing is demanded without
       one */
    std::optional<double> failUnder;
    /* Lets types of components pass that nobody described */
    bool allowUndescribed = false;
    /* Counts outdated translations, too */
    bool allowOutdated = false;
};

int showStatus(const ProjectOptions& options, bool json, const Gate& gate);

/* What isn't translated or is outdated, for all languages but the pseudo ones if
   no codes are given */
int listMissing(const ProjectOptions& options, const Codes& codes, bool json);

struct ImportOptions {
    /* Languages to read, all if empty */
    Codes codes;
    SourceChoice choice;
    /* Takes empty texts and the word None */
    bool allowsEmpty = false;
    bool dryRun = false;
};

int importFiles(const ProjectOptions& project, const ImportOptions& options);

struct ExportOptions {
    /* Languages to write, all if empty */
    Codes codes;
    SourceChoice choice;
    /* Drops texts that the project has no place for, instead of refusing to;
       but not if they may be of component types that nobody described, unless
       that's allowed */
    bool prune = false;
    bool allowUndescribed = false;
};

int exportFiles(const ProjectOptions& project, const ExportOptions& options);

/* Formats of translation tools */
enum class ExchangeFormat : std::uint8_t { Xliff, Csv };

struct HandOutOptions {
    /* Languages to write, all but the project's own if empty */
    Codes codes;
    ExchangeFormat format = ExchangeFormat::Xliff;
    /* A file, or for XLIFF also the folder for one of each language */
    Containers::String output;
    /* Replaces files that are there */
    bool force = false;
};

int handOut(const ProjectOptions& project, const HandOutOptions& options);

struct HandInOptions {
    std::vector<Containers::String> files;
    /* Languages to take from them, all if empty */
    Codes codes;
    /* Who is right where a translation was changed in the project's files and
       in these */
    SourceChoice choice;
    /* Takes the word None */
    bool allowsEmpty = false;
    bool dryRun = false;
};

int handIn(const ProjectOptions& project, const HandInOptions& options);

/* Lets outdated translations count as up to date, all of them if no keys are
   given */
int confirmTranslations(const ProjectOptions& project,
    Containers::StringView code, const Codes& keys);

enum class FindingFormat { Text, Json, Sarif };

struct CheckOptions {
    /* Languages to check, all if empty */
    Codes codes;
    /* Names of rules; all if only is empty */
    Codes only, skip;
    std::optional<double> maxGrowth;
    /* Whether warnings fail the command as well as errors */
    bool failsOnWarning = false;
    FindingFormat format = FindingFormat::Text;
};

/* Why a name isn't that of a rule, empty if it is */
std::string ruleFault(const std::string& name);

int checkTranslations(
    const ProjectOptions& project, const CheckOptions& options);

struct AcceptOptions {
    Containers::String rule;
    Containers::String code;
    /* All translations in which the rule finds something if empty */
    Codes keys;
    std::optional<double> maxGrowth;
    /* Takes back what was accepted */
    bool withdraws = false;
};

/* Lets findings pass in all further checks */
int acceptFindings(const ProjectOptions& project, const AcceptOptions& options);

/* Stores all generated keys in the project */
int pinKeys(const ProjectOptions& project);

}}

#endif
