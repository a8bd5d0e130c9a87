#ifndef Orrelin_host_commands_FindingOutput_h
#define Orrelin_host_commands_FindingOutput_h

#include "Findings.h"

namespace OrrelinEngine { namespace Host {

/* Each prints what isn't accepted */

/* For people, by language and with a sum */
void printFindings(
    const std::vector<ProjectLanguage>& languages, const Findings& findings);

/* A list for scripts */
void printJson(const Findings& findings);

/* SARIF 2.1.0, which code hosts show beside the lines */
void printSarif(const Findings& findings);

}}

#endif
