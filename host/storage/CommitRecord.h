#ifndef Orrelin_host_storage_CommitRecord_h
#define Orrelin_host_storage_CommitRecord_h

#include <vector>
#include <Corrade/Containers/Optional.h>

#include "files.h"

namespace OrrelinEngine { namespace Host {

/* One file that changes; ProjectFolders explains its key. A file that doesn't
   exist after the change is removed. */
struct FileChange {
    Containers::String key;
    Version before, after;
};

/* A set of changes, of which all are made or none. A record from the disk may
   be a stranger's. So it can't name paths, and only changes files with contents
   of the versions that it names. */
struct CommitRecord {
    /* ProjectFolders::id of the command that made the record */
    std::uint64_t id = 0;
    /* How many folders were made to have one for the languages */
    std::uint64_t madeFolders = 0;
    /* By ascending keys */
    std::vector<FileChange> changes;

    /* The change of a key, null if there's none */
    const FileChange* find(const Containers::String& key) const;

    /* Name of the staged file. An archive's keeps its extension, as imports go
       by that. */
    Containers::String stagedName(const FileChange& change) const;
};

/* The begin of the names of staged files */
Containers::String stagedPrefix(std::uint64_t id);

/* The record as text, with a hash of all other lines in the last one */
Containers::String toText(const CommitRecord& record);

/* The record of a text; nothing if toText() wouldn't write exactly that, or if
   a key isn't a plain name */
Containers::Optional<CommitRecord> recordFrom(Containers::StringView text);

}}

#endif
