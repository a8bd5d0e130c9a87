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

/* A content, as its size and hash. Equal ones are taken for the same. */
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

/* The properties by which a change of a file is noticed without reading it. The
   error is that of looking at it, ENOENT for a missing file. */
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
    /* Why it can't be read; empty if it was read or is missing */
    Containers::String fault;
    Identity identity;
    /* Whether another change may leave its times as they are, as file systems
       count in steps of up to two seconds */
    bool isRecent = false;
};

Version versionOf(const FileContent& file);

/* Reads a file as a whole. Refuses files that aren't regular, without waiting
   for them. The flags are passed to open() in addition. */
FileContent readFile(int folder, const Containers::String& name, int flags = 0);

/* Names in a folder, sorted; hidden ones only if asked for. Returns why it
   can't be read. */
Containers::String listFolder(const Descriptor& folder,
    std::vector<Containers::String>& names, bool withHidden);

/* Makes a new file. Removes an old one of that name instead of writing over it,
   as it may be open or a link. Only the owner may read and write a private
   file. */
Descriptor createFile(
    int folder, const Containers::String& name, bool isPrivate);

bool writeAll(int file, Containers::StringView content);

/* Writes all and waits until it's on the disk */
bool writeAndSync(int file, Containers::StringView content);

bool sync(int descriptor);

/* Refuses a link unless it follows links. Those on the way to the folder are
   always followed. */
Descriptor openFolder(
    int parent, const Containers::String& name, bool followsLinks);

/* Why a file in a folder can't be replaced or removed, even if it can be written
   to; empty if it can. The file doesn't need to exist. */
Containers::String placeFault(
    const Containers::String& folder, const Containers::String& name);

/* "can't VERB FILE: REASON", of errno */
Containers::String fault(Containers::StringView verb,
    Containers::StringView file, int error = errno);

/* The folder of a path, "." for a plain name */
Containers::String folderOf(Containers::StringView path);

/* Whether it can be the name of a file in a folder: not a path, without control
   characters, and not the storage's own folder */
bool isPlainName(Containers::StringView name);

}}

#endif
