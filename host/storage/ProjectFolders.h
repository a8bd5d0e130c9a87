#ifndef Orrelin_host_storage_ProjectFolders_h
#define Orrelin_host_storage_ProjectFolders_h

#include <cstdint>
#include <Corrade/Containers/Optional.h>

#include "Descriptor.h"
#include "files.h"

namespace OrrelinEngine { namespace Host {

/* The hidden folder, beside each file, in which new contents are written before
   they are moved into place. The one of the project also has the lock and the
   commit record. */
constexpr const char* StagingFolder = ".orrelin";

/* The places of a project's files. The storage names the files that it writes
   by keys: an empty key is the project file, any other a name in the folder of
   the languages. A key can't name anything else. */
struct ProjectFolders {
    /* As the user gave it, maybe a link */
    Containers::String file;
    /* Of the language files; it doesn't need to exist */
    Containers::String languages;
    /* The folder of the project file */
    Descriptor folder;
    /* Distinguishes staged files of this project from those of others that have
       their languages in the same folder */
    std::uint64_t id = 0;

    /* Opens the folder of the project file. Returns why it can't be opened. */
    Containers::String open(Containers::StringView projectFile);

    Containers::String path() const { return folderOf(file); }
    Containers::String path(const Containers::String& key) const;

    Containers::Optional<Containers::String> key(
        Containers::StringView path) const;

    /* Finds the real folder and name of a file, following links. Links may come
       with a stranger's project, so only the link of the project file itself
       may lead out of the folders of project and languages. Returns why a link
       is refused. */
    Containers::String resolve(const Containers::String& key,
        Containers::String& realFolder, Containers::String& name) const;
};

}}

#endif
