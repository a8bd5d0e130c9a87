#ifndef Orrelin_host_storage_CommitRecord_h
#define Orrelin_host_storage_CommitRecord_h

#include <vector>
#include <Corrade/Containers/Optional.h>

#include "files.h"

namespace OrrelinEngine { namespace Host {

/* One file that changes; its key is told at ProjectFolders. If it doesn't exist
   after, it's removed. */
struct FileChange {
    Containers::String key;
    Version before, after;
};

/* A set of changes that are made all or none. As it comes from the disk, it has
   no paths, and what it says holds only for contents of the given versions. */
struct CommitRecord {
    /* ProjectFolders::id when it was made */
    std::uint64_t id = 0;
    /* Folders that were made for the languages */
    std::uint64_t madeFolders = 0;
    /* By ascending keys */
    std::vector<FileChange> changes;

    /* Null if there's none */
    const FileChange* find(const Containers::String& key) const;

    /* Ends as the file does, for who goes by the extension */
    Containers::String stagedName(const FileChange& change) const;
};

/* What the names of staged files start with */
Containers::String stagedPrefix(std::uint64_t id);

/* The last line is a hash of what is before it */
Containers::String toText(const CommitRecord& record);

/* Nothing if it isn't exactly as toText() writes a record with keys that may
   be */
Containers::Optional<CommitRecord> recordFrom(Containers::StringView text);

}}

#endif
