#ifndef Orrelin_host_storage_Snapshot_h
#define Orrelin_host_storage_Snapshot_h

#include <vector>

#include "files.h"

namespace OrrelinEngine { namespace Host {

/* Remembers what was read, to find out whether it's still so */
class Snapshot {
public:
    /* The file that was asked for, and the path where the content was */
    void add(Containers::StringView file, const Containers::String& path,
        const FileContent& content);
    void addFolder(const Containers::String& folder,
        std::vector<Containers::String> names);

    /* The first file or folder that isn't as it was read anymore, or empty.
       Asks for each file, but reads again only those that were written seconds
       before. */
    Containers::String changed() const;

    /* Takes the files themselves for those that stood for them until now. If
       one of them has another content, returns it as above. */
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

/* Names in a folder that aren't hidden. Returns why it can't be read; a missing
   one has none. */
Containers::String visibleNames(
    const Containers::String& folder, std::vector<Containers::String>& names);

}}

#endif
