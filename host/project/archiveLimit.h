#ifndef Orrelin_host_project_archiveLimit_h
#define Orrelin_host_project_archiveLimit_h

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* Whether the name is that of an archive's entry which macOS adds on its own */
bool isPutByPrograms(Containers::StringView name);

/* Names of all entries of an archive; none if it can't be read */
std::vector<Containers::String> entriesOf(const Containers::String& path);

/* A small archive can unpack to more than the memory. Of a project's language
   files, more isn't believed than this, for each entry up to the number of
   languages that there are:

        (key and text of all terms, and 32 bytes for each) * 16

   unless the user set a limit. Unpacking fails at more than an entry claims.
   Returns why the archive is refused, nothing if it isn't or can't be read:
   whoever reads it next prints why. The name is the user's, for messages; the
   path is where the archive is now. */
Containers::String archiveFault(Project& project, Containers::StringView name,
    const Containers::String& path);

}}

#endif
