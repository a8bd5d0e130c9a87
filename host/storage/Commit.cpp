#include "Commit.h"

#include <cstdio>
#include <fcntl.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

namespace OrrelinEngine { namespace Host {

namespace {

bool isMissing(const Containers::String& path) {
    struct stat status;
    return ::stat(path.data(), &status) != 0 && errno == ENOENT;
}

/* The folder itself and those above, from the lowest up */
std::vector<Containers::String> missingFolders(Containers::StringView folder) {
    std::vector<Containers::String> out;
    for(Containers::String path = folder; isMissing(path);
        path = folderOf(path))
        out.push_back(path);
    return out;
}

bool containsWrites(const CommitRecord& record) {
    for(const FileChange& change: record.changes)
        if(!change.key.isEmpty() && change.after.exists)
            return true;
    return false;
}

}

Commit::Commit(const ProjectFolders& folders, const Descriptor& hidden,
    CommitRecord record):
    _folders(folders),
    _hidden(hidden), _record{std::move(record)} {}

Containers::String Commit::stage(
    const std::map<Containers::String, Containers::String>& contents) {
    if(containsWrites(_record))
        _record.madeFolders = missingFolders(_folders.languages).size();
    Containers::String fault = writeRecord();
    if(fault.isEmpty())
        fault = makeLanguagesFolder();
    for(const FileChange& change: _record.changes)
        if(fault.isEmpty() && change.after.exists)
            fault = stageFile(change, contents.find(change.key)->second);
    return fault.isEmpty() ? leave() : fault;
}

Containers::String Commit::publish() {
    if(_record.changes.size() == 1)
        return {};
    if(::renameat(*_hidden, NewRecordName, *_hidden, RecordName) != 0)
        return fault("write", _folders.file);
    _isPublished = true;
    return sync(*_hidden) && sync(*_folders.folder)
        ? ""
        : fault("write", _folders.file);
}

Containers::String Commit::apply() {
    for(std::size_t i = 0; i != _record.changes.size(); ++i) {
        if(i < _isApplied.size() && _isApplied[i])
            continue;
        const FileChange& change = _record.changes[i];
        Containers::String reason = enter(change.key);
        if(reason.isEmpty() && !applyChange(change))
            reason = fault(change.after.exists ? "write" : "remove",
                _folders.path(change.key));
        if(!reason.isEmpty())
            return reason;
    }
    return leave();
}

Containers::String Commit::clean() {
    const Containers::String prefix = stagedPrefix(_record.id);
    Containers::String last, path;
    for(const FileChange& change: _record.changes) {
        if(!_folders.resolve(change.key, path, _name).isEmpty() || path == last)
            continue;
        sweep(path, prefix);
        last = path;
    }
    removeMadeFolders();

    /* Last, as it says what is to be removed if this is killed, too */
    Containers::String out;
    if(::unlinkat(*_hidden, _isPublished ? RecordName : NewRecordName, 0) !=
            0 &&
        errno != ENOENT)
        out = fault("clean up the folder", _folders.path());
    sync(*_hidden);
    return out;
}

Containers::String Commit::checkLeft() {
    _isPublished = true;
    for(const FileChange& change: _record.changes) {
        Containers::String reason = enter(change.key);
        bool isApplied = false;
        if(reason.isEmpty())
            reason = checkChange(change, isApplied);
        if(!reason.isEmpty())
            return reason;
        _isApplied.push_back(isApplied);
    }
    return {};
}

Containers::String Commit::checkChange(
    const FileChange& change, bool& isApplied) {
    const Containers::String file = _folders.path(change.key);
    const FileContent now = readFile(*_folder, _name, O_NOFOLLOW);
    if(!now.fault.isEmpty())
        return Utility::format("can't read {}: {}", file, now.fault);
    const Version version = versionOf(now);
    isApplied = version == change.after;
    if(isApplied)
        return {};
    if(!(version == change.before))
        return Utility::format("{} was changed since", file);
    if(!change.after.exists)
        return {};
    const FileContent staged = _staging
        ? readFile(*_staging, _record.stagedName(change), O_NOFOLLOW)
        : FileContent{};
    return versionOf(staged) == change.after
        ? ""
        : Utility::format("the new {} is damaged", file);
}

/* Opens the folder of the file, unless it's open from the one before */
Containers::String Commit::enter(const Containers::String& key) {
    Containers::String path;
    Containers::String reason = _folders.resolve(key, path, _name);
    if(!reason.isEmpty() || path == _path)
        return reason;
    reason = leave();
    if(!reason.isEmpty())
        return reason;
    _folder = openFolder(AT_FDCWD, path, true);
    if(!_folder)
        return fault("open the folder", path);
    _path = path;
    _staging = openFolder(*_folder, StagingFolder, false);
    if(_staging || errno == ENOENT)
        return {};
    return fault("use the folder", Utility::Path::join(path, StagingFolder));
}

/* Another project with its languages in the same folder removes it when it's
   done */
Containers::String Commit::openStaging() {
    while(!_staging) {
        if(::mkdirat(*_folder, StagingFolder, 0777) != 0 && errno != EEXIST)
            return fault("write to the folder", _path);
        _staging = openFolder(*_folder, StagingFolder, false);
        if(!_staging && errno != ENOENT)
            return fault(
                "use the folder", Utility::Path::join(_path, StagingFolder));
    }
    return {};
}

/* The names in the folder reach the disk, too */
Containers::String Commit::leave() {
    const Containers::String path = std::move(_path);
    _path = {};
    const bool isSynced =
        path.isEmpty() || ((!_staging || sync(*_staging)) && sync(*_folder));
    const Containers::String out =
        isSynced ? "" : fault("write to the folder", path);
    _staging = Descriptor{};
    _folder = Descriptor{};
    return out;
}

Containers::String Commit::makeLanguagesFolder() {
    std::vector<Containers::String> missing;
    if(_record.madeFolders)
        missing = missingFolders(_folders.languages);
    for(std::size_t i = missing.size(); i; --i) {
        const Containers::String& path = missing[i - 1];
        if(::mkdir(path.data(), 0777) != 0 && errno != EEXIST)
            return fault("make the folder", path);
        const Descriptor parent = openFolder(AT_FDCWD, folderOf(path), true);
        if(!parent || !sync(*parent))
            return fault("make the folder", path);
    }
    return {};
}

/* Those that are empty, which they aren't if files were written */
void Commit::removeMadeFolders() {
    Containers::String path = _folders.languages;
    for(std::uint64_t i = 0; i != _record.madeFolders; ++i) {
        if(::rmdir(path.data()) != 0 && errno != ENOENT)
            break;
        path = folderOf(path);
    }
}

Containers::String Commit::writeRecord() {
    const Descriptor file = createFile(*_hidden, NewRecordName, false);
    return file && writeAndSync(*file, toText(_record))
        ? ""
        : fault("write to the folder", _folders.path());
}

Containers::String Commit::stageFile(
    const FileChange& change, const Containers::String& content) {
    Containers::String reason = enter(change.key);
    if(reason.isEmpty())
        reason = openStaging();
    if(!reason.isEmpty())
        return reason;
    const Descriptor file =
        createFile(*_staging, _record.stagedName(change), change.before.exists);
    const bool isWritten = file &&
        (!change.before.exists || keepOwner(*file)) &&
        writeAndSync(*file, content);
    return isWritten ? "" : fault("write", _folders.path(change.key));
}

/* Giving it to another owner isn't allowed to everybody */
bool Commit::keepOwner(int file) const {
    struct stat before, now;
    if(::fstatat(*_folder, _name.data(), &before, AT_SYMLINK_NOFOLLOW) != 0 ||
        ::fstat(file, &now) != 0)
        return false;
    if(before.st_uid != now.st_uid || before.st_gid != now.st_gid)
        static_cast<void>(::fchown(file, before.st_uid, before.st_gid) == 0 ||
            ::fchown(file, uid_t(-1), before.st_gid) == 0);
    return ::fchmod(file, before.st_mode & 07777) == 0;
}

bool Commit::applyChange(const FileChange& change) {
    if(!change.after.exists)
        return ::unlinkat(*_folder, _name.data(), 0) == 0;
    return ::renameat(*_staging, _record.stagedName(change).data(), *_folder,
               _name.data()) == 0;
}

void removeLeftovers(const ProjectFolders& folders, const Descriptor& hidden) {
    const FileContent file = readFile(*hidden, NewRecordName, O_NOFOLLOW);
    const auto record = recordFrom(file.content);
    if(record)
        Commit{folders, hidden, *record}.clean();
    else
        ::unlinkat(*hidden, NewRecordName, 0);

    const Containers::String prefix = stagedPrefix(folders.id);
    Containers::String project, name;
    folders.resolve({}, project, name);
    for(const Containers::String& path:
        {folders.path(), project, folders.languages})
        sweep(path, prefix);
    sweep(folders.path(), ArchiveName);
}

void sweep(const Containers::String& path, const Containers::String& prefix) {
    const Descriptor folder = openFolder(AT_FDCWD, path, true);
    const Descriptor staging = openFolder(*folder, StagingFolder, false);
    std::vector<Containers::String> names;
    if(!staging || !listFolder(staging, names, true).isEmpty())
        return;
    for(const Containers::String& name: names)
        if(Containers::StringView{name}.hasPrefix(prefix))
            ::unlinkat(*staging, name.data(), 0);
    ::unlinkat(*folder, StagingFolder, AT_REMOVEDIR);
}

}}
