#ifndef Orrelin_host_storage_writeOutput_h
#define Orrelin_host_storage_writeOutput_h

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Writes a file that isn't one of a project, for the user to pass on. It has
   the old or the new content at any moment. If it's there already, it's only
   replaced if that's allowed. A link or what isn't a regular file never is.
   Returns why it can't be written, also in the first case; empty if it's there
   now. */
Containers::String writeOutput(const Containers::String& path,
    Containers::StringView content, bool mayReplace);

/* Why that would fail; empty if nothing is known */
Containers::String outputFault(const Containers::String& path, bool mayReplace);

}}

#endif
