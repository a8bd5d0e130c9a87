#include "Storage.h"

#include <cstring>
#include <set>
#include <fcntl.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Commit.h"

namespace OrrelinEngine { namespace Host {

namespace {

FileContent failed(const Containers::String& file, Containers::String fault) {
    FileContent out;
    out.identity = identityOf(file);
    out.fault = std::move(fault);
    return out;
}

/* The line for what was read */
Containers::String faultOf(
    const FileContent& content, Containers::StringView file) {
    return content.fault.isEmpty()
        ? ""
        : Utility::format("can't read {}: {}", file, content.fault);
}

/* No write bits at all are the lock of a version control */
bool isReadOnly(const Containers::String& path) {
    struct stat status;
    return ::stat(path.data(), &status) == 0 &&
        (!(status.st_mode & 0222) ||
            ::faccessat(AT_FDCWD, path.data(), W_OK, AT_EACCESS) != 0);
}

}

Storage::~Storage() {
    /* With the temporary files of who wrote it */
    if(_block)
        sweep(_folders.path(), ArchiveName);
}

Containers::String Storage::open(Containers::StringView projectFile) {
    if(projectFile.contains('\0'))
        return "a file's name can't have a zero byte";
    const Containers::String fault = _folders.open(projectFile);
    return fault.isEmpty() ? loadRecord() : fault;
}

Containers::String Storage::lock(
    Containers::StringView command, std::chrono::milliseconds wait) {
    Containers::String fault = _lock.acquire(_folders, command, wait);
    if(!fault.isEmpty())
        return fault;
    /* Nobody else can commit from now on */
    _snapshot = Snapshot{};
    return loadRecord();
}

Containers::String Storage::setLanguagesFolder(Containers::StringView folder) {
    if(folder.contains('\0'))
        return "a folder's name can't have a zero byte";
    while(folder.size() > 1 && folder.hasSuffix('/'))
        folder = folder.exceptSuffix(1);
    _folders.languages = folder.isEmpty() ? "." : folder;
    return _lock.isHeld() ? recover() : "";
}

FileContent Storage::read(Containers::StringView file) {
    Containers::String path;
    return readAt(file, path);
}

Containers::String Storage::find(
    Containers::StringView file, Containers::String& path) {
    return faultOf(readAt(file, path), file);
}

Containers::String Storage::list(
    const Containers::String& folder, std::vector<Containers::String>& names) {
    const Containers::String reason = visibleNames(folder, names);
    if(!reason.isEmpty())
        return Utility::format("can't read the folder {}: {}", folder, reason);
    _snapshot.addFolder(folder, names);
    if(!_pending)
        return {};

    std::set<Containers::String> pending{names.begin(), names.end()};
    for(const FileChange& change: _pending->changes) {
        if(!_folders.key(Utility::Path::join(folder, change.key)))
            continue;
        if(change.after.exists)
            pending.insert(change.key);
        else
            pending.erase(change.key);
    }
    names.assign(pending.begin(), pending.end());
    return {};
}

Containers::String Storage::write(
    Containers::StringView file, Containers::String content) {
    return put(file, std::move(content), true);
}

Containers::String Storage::remove(Containers::StringView file) {
    return put(file, {}, false);
}

Containers::String Storage::archivePath() {
    CORRADE_ASSERT(_lock.isHeld(), "Storage::archivePath(): no lock", {});
    if(!_block)
        _block = std::make_unique<SignalBlock>();
    return Utility::Path::join({_folders.path(), StagingFolder, ArchiveName});
}

Containers::String Storage::writeArchive(Containers::StringView file) {
    FileContent content = readFile(AT_FDCWD, archivePath(), O_NOFOLLOW);
    if(content.identity.error == ENOENT)
        content.fault = std::strerror(ENOENT);
    return content.exists
        ? write(file, std::move(content.content))
        : Utility::format("can't write {}: {}", file, content.fault);
}

Containers::String Storage::commit() {
    CORRADE_ASSERT(_lock.isHeld() && !_folders.languages.isEmpty(),
        "Storage::commit(): no lock or no folder of languages", {});
    const SignalBlock block;
    CommitRecord record;
    record.id = _folders.id;
    Containers::String fault = prepare(record);
    if(fault.isEmpty() && block.isPending())
        fault = "interrupted by a signal";
    if(fault.isEmpty() && !record.changes.empty())
        fault = carryOut(record);
    if(fault.isEmpty()) {
        _contents.clear();
        _versions.clear();
        _snapshot = Snapshot{};
    }
    return fault;
}

Containers::String Storage::loadRecord() {
    const Containers::String path =
        Utility::Path::join(_folders.path(), StagingFolder);
    const Descriptor hidden =
        openFolder(*_folders.folder, StagingFolder, false);
    if(!hidden && errno != ENOENT)
        return fault("use the folder", path);
    const FileContent file =
        hidden ? readFile(*hidden, RecordName, O_NOFOLLOW) : FileContent{};
    const Containers::String recordPath = Utility::Path::join(path, RecordName);
    if(!_lock.isHeld())
        _snapshot.add(_folders.file, recordPath, file);
    if(!file.fault.isEmpty())
        return faultOf(file, recordPath);
    _pending = Containers::NullOpt;
    if(!file.exists)
        return {};
    _pending = recordFrom(file.content);
    return _pending ? ""
                    : Utility::format("{} is damaged; removing the folder "
                                      "keeps the files as they are now",
                          path);
}

Containers::String Storage::recover() {
    const SignalBlock block;
    if(!_pending) {
        removeLeftovers(_folders, _lock.folder());
        return {};
    }

    Commit commit{_folders, _lock.folder(), *_pending};
    Containers::String fault = commit.checkLeft();
    if(fault.isEmpty())
        fault = commit.apply();
    if(fault.isEmpty())
        fault = commit.clean();
    if(!fault.isEmpty())
        return Utility::format("{}; a command was interrupted and can't be "
                               "completed, removing the folder {} keeps the "
                               "files as they are now",
            fault, Utility::Path::join(_folders.path(), StagingFolder));

    /* An archive that the command wrote isn't part of its commit */
    removeLeftovers(_folders, _lock.folder());
    _pending = Containers::NullOpt;
    const Containers::String changed = _snapshot.refresh();
    return changed.isEmpty()
        ? ""
        : Utility::format(
              "{} was changed by another program meanwhile", changed);
}

/* Where it's staged or, if another command has completed it meanwhile, in its
   place */
FileContent Storage::readPending(const FileChange& change,
    Containers::StringView file, Containers::String& path) {
    Containers::String folder, name;
    Containers::String fault = _folders.resolve(change.key, folder, name);
    if(!fault.isEmpty())
        return failed(file, std::move(fault));
    if(change.after.exists) {
        const Descriptor real = openFolder(AT_FDCWD, folder, true);
        const Descriptor staging = openFolder(*real, StagingFolder, false);
        const Containers::String staged = _pending->stagedName(change);
        path = Utility::Path::join({folder, StagingFolder, staged});
        FileContent out =
            staging ? readFile(*staging, staged, O_NOFOLLOW) : FileContent{};
        if(versionOf(out) == change.after)
            return out;
    }

    path = file;
    FileContent out = readFile(AT_FDCWD, path);
    if(!change.after.exists && versionOf(out) == change.before) {
        out.exists = out.isRecent = false;
        out.content = {};
        return out;
    }
    return versionOf(out) == change.after
        ? std::move(out)
        : failed(file,
              "a command that was interrupted can't be completed; removing "
              "the folder .orrelin keeps the files as they are now");
}

FileContent Storage::readAt(
    Containers::StringView file, Containers::String& path) {
    path = file;
    if(file.contains('\0'))
        return failed({}, "its name has a zero byte");
    const auto key = _folders.key(file);
    const FileChange* const change =
        _pending && key ? _pending->find(*key) : nullptr;
    FileContent out =
        change ? readPending(*change, file, path) : readFile(AT_FDCWD, path);
    _snapshot.add(file, path, out);
    return out;
}

Containers::String Storage::put(
    Containers::StringView file, Containers::String content, bool exists) {
    const auto key = _folders.key(file);
    if(!key)
        return Utility::format(
            "can't write {}: it isn't in the folder of the languages", file);
    _versions[*key] = exists ? versionOf(content) : Version{};
    _contents[*key] = std::move(content);
    return {};
}

Containers::String Storage::prepare(CommitRecord& record) {
    std::set<std::pair<dev_t, ino_t>> files;
    for(const auto& version: _versions) {
        Containers::String fault =
            prepareChange(version.first, version.second, record);
        if(!fault.isEmpty())
            return fault;
        const Containers::String path = _folders.path(version.first);
        const Identity identity = identityOf(path);
        if(!identity.error &&
            !files.emplace(identity.device, identity.inode).second)
            return Utility::format(
                "can't write {}: another one leads to the same file", path);
    }
    return {};
}

Containers::String Storage::prepareChange(
    const Containers::String& key, const Version& after, CommitRecord& record) {
    const Containers::String path = _folders.path(key);
    /* A file is only read again if that may show that it doesn't change */
    const Version* const known = _snapshot.find(path);
    Version before;
    if(known && !(*known == after))
        before = *known;
    else {
        const FileContent content = read(path);
        if(!content.fault.isEmpty())
            return Utility::format("can't write {}: {}", path, content.fault);
        if(content.exists == after.exists &&
            content.content == _contents.find(key)->second)
            return {};
        before = versionOf(content);
    }
    Containers::String folder, name;
    Containers::String fault = _folders.resolve(key, folder, name);
    if(fault.isEmpty() && isReadOnly(path))
        fault = Utility::format("can't write {}: it's read-only", path);
    /* What can't be taken back anymore must not fail */
    if(fault.isEmpty() && before.exists) {
        const Containers::String reason = placeFault(folder, name);
        if(!reason.isEmpty())
            fault = Utility::format("can't write {}: {}", path, reason);
    }
    record.changes.push_back({key, before, after});
    return fault;
}

Containers::String Storage::carryOut(const CommitRecord& record) {
    Commit commit{_folders, _lock.folder(), record};
    Containers::String fault = commit.stage(_contents);
    if(fault.isEmpty()) {
        const Containers::String changed = _snapshot.changed();
        if(!changed.isEmpty())
            fault = Utility::format(
                "{} was changed by another program meanwhile", changed);
    }
    if(fault.isEmpty() && SignalBlock{}.isPending())
        fault = "interrupted by a signal";
    if(fault.isEmpty())
        fault = commit.publish();
    if(fault.isEmpty())
        fault = commit.apply();
    if(fault.isEmpty())
        return commit.clean();
    if(!commit.isPublished()) {
        commit.clean();
        return fault;
    }
    return Utility::format(
        "{}; the next command that writes the project completes it", fault);
}

}}
