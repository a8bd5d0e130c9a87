#ifndef Orrelin_host_brokenKeys_h
#define Orrelin_host_brokenKeys_h

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* Prints a warning for each text whose key in the project isn't one, so that it
   has the empty key and shares the translations of all such texts */
void warnOfBrokenKeys(Project& project);

/* Prints a line for each value whose text isn't in the language files, as it
   has the key of another text */
void warnOfSharedKeys(Project& project);

}}

#endif
