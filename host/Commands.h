#ifndef Orrelin_host_Commands_h
#define Orrelin_host_Commands_h

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

/* Fails if a language is translated to less than the percentage */
int showStatus(const ProjectOptions& options, bool json, double failUnder);

int importFiles(const ProjectOptions& options, bool dryRun);

/* Exports all languages if no codes are given. With prune, also drops texts
   that the project has no place for, instead of refusing to. */
int exportFiles(const ProjectOptions& options, const Codes& codes, bool prune);

}}

#endif
