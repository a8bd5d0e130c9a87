#ifndef Orrelin_host_commandLine_Arguments_h
#define Orrelin_host_commandLine_Arguments_h

#include <optional>
#include <string>
#include <vector>
/* Turns the values into strings of the commands */
#include <Corrade/Containers/StringStl.h>

#include "commands/Commands.h"

namespace OrrelinEngine { namespace Host {

/* Values of the command line */
struct Arguments {
    std::string project;
    std::string components;
    unsigned int maxArchive = 0;
    std::string oldKey, newKey;
    std::string filter;
    std::vector<std::string> codes, keys, choices, files;
    std::string rule;
    std::vector<std::string> onlyRules, skippedRules;
    FindingFormat findingFormat = FindingFormat::Text;
    std::string format = "i18next", output;
    bool json = false;
    bool merge = false;
    bool dryRun = false;
    bool prune = false;
    bool allowEmpty = false;
    bool allowUndescribed = false;
    bool allowOutdated = false;
    bool force = false;
    bool failOnWarning = false;
    bool withdraw = false;
    std::optional<double> failUnder, maxGrowth;
    int result = Success;

    ProjectOptions options() const { return {project, components, maxArchive}; }
    /* Each once */
    Codes codeList() const;
    Codes keyList() const;
    CheckOptions checkOptions() const;
    SourceChoice choice() const;
};

}}

#endif
