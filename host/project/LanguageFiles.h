#ifndef Orrelin_host_project_LanguageFiles_h
#define Orrelin_host_project_LanguageFiles_h

#include <functional>
#include <Corrade/Containers/ArrayView.h>

#include "Project.h"

namespace OrrelinEngine { namespace Host {

struct LanguageFile {
    /* For messages; an archive stands in front like a folder */
    Containers::String path;
    /* With ".json". A file in a folder of an archive has that in front. */
    Containers::String name;
    Containers::String code;
    /* Without a byte order mark. Functions may change it. */
    Containers::ArrayView<char> content;
};

/* Whether the code can be the name of a file. If not, prints that. */
bool isFileName(Containers::StringView code);

/* Calls the function with each language file, one after the other, if there
   are any. Only those are read that are wanted, as their names tell. If one
   can't be read, prints why, goes on with the others and returns false, as if
   the function does. */
bool forEachLanguageFile(Project& project, const LanguageSource& source,
    const std::function<bool(Containers::StringView name)>& isWanted,
    const std::function<bool(LanguageFile& file)>& function);

/* Names of the entries in an archive that have nothing to do with languages, and
   weren't put there by a program. None if it can't be read. */
std::vector<Containers::String> foreignEntries(
    Project& project, Containers::StringView archive);

}}

#endif
