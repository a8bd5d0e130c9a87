#ifndef Orrelin_host_commands_Findings_h
#define Orrelin_host_commands_Findings_h

#include <optional>
#include <string>

#include "checks/Rules.h"
#include "project/Project.h"
#include "project/TextPlaces.h"

namespace OrrelinEngine { namespace Host {

struct Finding {
    const Rule* rule;
    /* What is wrong */
    std::string detail;
    /* Whether somebody did */
    bool isAccepted;
};

/* A translation with faults. Of two texts that share a key, the one in the
   language files is the source, and the other one the translation. */
struct FaultyText {
    Containers::String code;
    Containers::String key;
    /* In the project */
    Containers::String path;
    Containers::String source;
    Containers::String translation;
    /* An archive stands in front like a folder */
    Containers::String file;
    /* What is on the disk, the archive or the file */
    Containers::String artifact;
    /* The key in the file, as texts may have moved since it was written */
    Containers::String fileKey;
    /* Of the translation; files in archives have no lines for anybody */
    std::optional<Place> place;
    /* In the order of the rules */
    std::vector<Finding> findings;
};

struct Findings {
    /* In the order of the files */
    std::vector<FaultyText> texts;
    /* How many were checked */
    std::size_t languageCount = 0;
    std::size_t translationCount = 0;
    bool areFilesFine = true;
};

/* Whom to ask and for what */
struct FindingOptions {
    /* Languages, all if empty */
    Codes codes;
    std::vector<const Rule*> rules;
    std::optional<double> maxGrowth;
};

/* Applies rules to all translations that count, also to outdated ones, with the
   project's texts. Leaves out languages that aren't for readers. Linear in the
   size of the texts. */
Findings findFaults(Project& project, const FindingOptions& options);

}}

#endif
