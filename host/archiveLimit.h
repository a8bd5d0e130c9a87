#ifndef Orrelin_host_archiveLimit_h
#define Orrelin_host_archiveLimit_h

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* Whether an entry of an archive is one that file managers add on their own */
bool isPutByPrograms(Containers::StringView name);

/* Names of all entries of an archive; none if it can't be read */
std::vector<Containers::String> entriesOf(const Containers::String& path);

/* A small archive can unpack to more than the memory. Of a project's language
   files, more isn't believed than this, for each entry up to the number of
   languages that there are:

        (key and text of all terms, and 32 bytes for each) * 16

   and 16 MiB for all together. Returns why the archive is refused if it claims
   more, or can't be read; it can't unpack to more than it claims. The name is
   the user's, the path where it is. */
Containers::String archiveFault(Project& project, Containers::StringView name,
    const Containers::String& path);

}}

#endif
