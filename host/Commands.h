#ifndef Orrelin_host_Commands_h
#define Orrelin_host_Commands_h

#include <optional>

#include "Project.h"

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
};

int showStatus(const ProjectOptions& options, bool json, const Gate& gate);

int importFiles(const ProjectOptions& options, bool dryRun);

/* Exports all languages if no codes are given. With prune, also drops texts
   that the project has no place for, instead of refusing to; but not if they
   may be of component types that nobody described, unless that's allowed. */
int exportFiles(const ProjectOptions& options, const Codes& codes, bool prune,
    bool allowUndescribed);

}}

#endif
