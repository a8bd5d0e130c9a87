#ifndef Orrelin_host_storage_files_h
#define Orrelin_host_storage_files_h

#include <cerrno>
#include <cstdint>
#include <vector>
#include <sys/stat.h>
#include <Corrade/Containers/String.h>

#include "Descriptor.h"

namespace OrrelinEngine { namespace Host {

/* The system's calls on files, as the storage needs them. Folders are given by
   their descriptors; AT_FDCWD is one, too. */

/* Contents are told apart by their size and hash */
struct Version {
    bool exists = false;
    std::uint64_t size = 0;
    std::uint64_t hash = 0;

    bool operator==(const Version& other) const {
        return exists == other.exists && size == other.size &&
            hash == other.hash;
    }
};

Version versionOf(Containers::StringView content);

/* What changes with a file. The error is that of asking for it, ENOENT if
   there is no file. */
struct Identity {
    int error = ENOENT;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified{};
    timespec changed{};

    bool operator==(const Identity& other) const;
};

Identity identityOf(const Containers::String& path);

struct FileContent {
    bool exists = false;
    Containers::String content;
    /* Why it can't be read; empty if it was, and if there's no file */
    Containers::String fault;
    Identity identity;
    /* Whether it may yet change without a change of its times */
    bool isRecent = false;
};

Version versionOf(const FileContent& file);

/* Reads a file as a whole and never waits for one that isn't regular. The flags
   are more of those of open(). */
FileContent readFile(int folder, const Containers::String& name, int flags = 0);

/* Names in a folder, sorted, without those that are hidden unless asked for.
   Returns why it can't be read; a missing folder has no names. */
Containers::String listFolder(const Descriptor& folder,
    std::vector<Containers::String>& names, bool withHidden);

/* What is open already isn't written over. Only the owner gets at it if it's
   private. */
Descriptor createFile(
    int folder, const Containers::String& name, bool isPrivate);

/* Writes all and waits until it's on the disk */
bool writeAndSync(int file, Containers::StringView content);

bool sync(int descriptor);

/* No link is followed but on the way, if it's a path */
Descriptor openFolder(
    int parent, const Containers::String& name, bool followsLinks);

/* Why a file in a folder can't be replaced or removed, even if it can be written
   to; empty if it can. The file doesn't need to exist. */
Containers::String placeFault(
    const Containers::String& folder, const Containers::String& name);

/* "can't VERB FILE: REASON", of errno */
Containers::String fault(Containers::StringView verb,
    Containers::StringView file, int error = errno);

/* Folder of a path, "." if it names none */
Containers::String folderOf(Containers::StringView path);

/* Whether it's the name of a file and nothing else */
bool isPlainName(Containers::StringView name);

}}

#endif
