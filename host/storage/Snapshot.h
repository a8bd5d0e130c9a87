#ifndef Orrelin_host_storage_Snapshot_h
#define Orrelin_host_storage_Snapshot_h

#include <vector>

#include "files.h"

namespace OrrelinEngine { namespace Host {

/* Remembers which files and folders were read, to find out whether another
   program changed them since */
class Snapshot {
public:
    /* Takes the file that was asked for, and the path that its content was read
       from */
    void add(Containers::StringView file, const Containers::String& path,
        const FileContent& content);
    void addFolder(const Containers::String& folder,
        std::vector<Containers::String> names);

    /* The version of a file, if it was read from that path and looks as it did
       then; null otherwise. Doesn't read it. */
    const Version* find(const Containers::String& path) const;

    /* The first file or folder that has changed since it was read, empty if
       none has. Compares times. Reads a file again only if it had been written
       within seconds before: another change may leave its times the same. */
    Containers::String changed() const;

    /* To be called once staged contents are in the place of their files: from
       now on, those files are looked at. If one of them has another content,
       returns it as above. */
    Containers::String refresh();

private:
    struct Entry {
        Containers::String file, path;
        Identity identity;
        Version version;
        bool isRecent;
    };
    struct Folder {
        Containers::String path;
        std::vector<Containers::String> names;
    };

    std::vector<Entry> _entries;
    std::vector<Folder> _folders;
};

/* Names in a folder that aren't hidden. Returns why the folder can't be read. A
   missing one has no names. */
Containers::String visibleNames(
    const Containers::String& folder, std::vector<Containers::String>& names);

}}

#endif
