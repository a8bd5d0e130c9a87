#ifndef Orrelin_host_Commands_h
#define Orrelin_host_Commands_h

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* The commands. Each returns what the program exits with. */

int listTerms(const ProjectOptions& options, bool json);

/* With merge, the new key may be one that another term has */
int renameTerm(const ProjectOptions& options, Containers::StringView oldKey,
    Containers::StringView newKey, bool merge);

int listLanguages(Containers::StringView filter, bool json);

int addLanguages(const ProjectOptions& options, const Codes& codes);

int removeLanguages(const ProjectOptions& options, const Codes& codes);

/* Fails if a language is translated to less than a percentage */
int showStatus(const ProjectOptions& options, bool json, double failUnder);

int importFiles(const ProjectOptions& options, bool dryRun);

/* Of all languages if there are no codes. With prune, writes over texts that
   the project has no place for. */
int exportFiles(const ProjectOptions& options, const Codes& codes, bool prune);

}}

#endif
