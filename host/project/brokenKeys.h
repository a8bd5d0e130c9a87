#ifndef Orrelin_host_project_brokenKeys_h
#define Orrelin_host_project_brokenKeys_h

#include <map>

#include "Project.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

/* Prints a warning for each text whose key in the project isn't one, so that it
   has the empty key and shares the translations of all such texts */
void warnOfBrokenKeys(Project& project);

/* Keys by the paths of values whose texts aren't in the language files, as they
   have the keys of other texts. Valid until the project or its terms change. */
typedef std::map<Containers::StringView, Containers::StringView, StrLess>
    KeysByPath;
KeysByPath differentSharedTexts(Project& project);

/* Those whose generated key is stored for another text. It was generated for
   that when it had the place of this one. */
KeysByPath clashingGeneratedKeys(Project& project);

/* If there are such, prints that they have to be stored first, and returns
   false */
bool checkGeneratedKeys(Project& project);

/* Prints a line for each value whose text isn't in the language files, as it
   has the key of another text */
void warnOfSharedKeys(Project& project);

}}

#endif
