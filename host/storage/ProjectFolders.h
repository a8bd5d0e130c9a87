#ifndef Orrelin_host_storage_ProjectFolders_h
#define Orrelin_host_storage_ProjectFolders_h

#include <cstdint>
#include <Corrade/Containers/Optional.h>

#include "Descriptor.h"
#include "files.h"

namespace OrrelinEngine { namespace Host {

/* The hidden folder that everything passes through on its way to the disk. The
   one of the project has the lock and the commit record as well. */
constexpr const char* StagingFolder = ".orrelin";

/* Where the files of a project are. Those that the storage writes have keys:
   an empty one is the project file, others are names in the folder of the
   languages. Nothing else can be named by a key. */
struct ProjectFolders {
    /* As the user gave it, maybe a link */
    Containers::String file;
    /* Of the language files; it doesn't need to exist */
    Containers::String languages;
    /* The one with the file */
    Descriptor folder;
    /* Tells staged files of the project from those of others that have their
       languages in the same folder */
    std::uint64_t id = 0;

    /* Opens the folder of a file. Returns why it can't be. */
    Containers::String open(Containers::StringView projectFile);

    Containers::String path() const { return folderOf(file); }
    Containers::String path(const Containers::String& key) const;

    Containers::Optional<Containers::String> key(
        Containers::StringView path) const;

    /* Through a link to the folder and name of the real file, if there's one.
       As links may come with a project from a stranger, only the project file
       itself may be elsewhere than in the folders of project and languages.
       Returns why it's refused. */
    Containers::String resolve(const Containers::String& key,
        Containers::String& realFolder, Containers::String& name) const;
};

}}

#endif
