#include "Snapshot.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace OrrelinEngine { namespace Host {

void Snapshot::add(Containers::StringView file, const Containers::String& path,
    const FileContent& content) {
    _entries.push_back(
        {file, path, content.identity, versionOf(content), content.isRecent});
}

void Snapshot::addFolder(
    const Containers::String& folder, std::vector<Containers::String> names) {
    _folders.push_back({folder, std::move(names)});
}

const Version* Snapshot::find(const Containers::String& path) const {
    const Identity now = identityOf(path);
    for(const Entry& entry: _entries)
        if(entry.path == path && entry.version.exists && !entry.isRecent &&
            entry.identity == now)
            return &entry.version;
    return nullptr;
}

Containers::String Snapshot::changed() const {
    for(const Entry& entry: _entries)
        if(!(identityOf(entry.path) == entry.identity) ||
            (entry.isRecent &&
                !(versionOf(readFile(AT_FDCWD, entry.path)) == entry.version)))
            return entry.file;
    std::vector<Containers::String> names;
    for(const Folder& folder: _folders)
        if(!visibleNames(folder.path, names).isEmpty() || names != folder.names)
            return folder.path;
    return {};
}

Containers::String Snapshot::refresh() {
    for(Entry& entry: _entries) {
        const FileContent now = readFile(AT_FDCWD, entry.file);
        if(!now.fault.isEmpty() || !(versionOf(now) == entry.version))
            return entry.file;
        entry = {
            entry.file, entry.file, now.identity, entry.version, now.isRecent};
    }
    return {};
}

Containers::String visibleNames(
    const Containers::String& folder, std::vector<Containers::String>& names) {
    names.clear();
    const Descriptor opened = openFolder(AT_FDCWD, folder, true);
    if(opened)
        return listFolder(opened, names, false);
    if(errno != ENOENT)
        return std::strerror(errno);
    struct stat status;
    return ::lstat(folder.data(), &status) == 0
        ? "it's a link to a folder that isn't there"
        : "";
}

}}
