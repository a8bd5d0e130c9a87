#include "ProjectLock.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Signals.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef std::chrono::steady_clock Clock;

bool isSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/* Whether the name still stands for what was opened by it */
bool isCurrent(int parent, const char* name, int opened) {
    struct stat now, then;
    return ::fstatat(parent, name, &now, AT_SYMLINK_NOFOLLOW) == 0 &&
        ::fstat(opened, &then) == 0 && isSame(now, then);
}

/* A link to a file elsewhere would have that one written over */
bool isOwnFile(int file) {
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_nlink <= 1;
}

}

ProjectLock::~ProjectLock() {
    if(!isHeld())
        return;
    const SignalBlock block;
    keepLockOnSignals();
    ::unlinkat(*_folder, LockName, 0);
    ::unlinkat(**_parent, StagingFolder, AT_REMOVEDIR);
}

Containers::String ProjectLock::acquire(const ProjectFolders& folders,
    Containers::StringView command, std::chrono::milliseconds wait) {
    constexpr timespec Pause{0, 5000000};
    _parent = &folders.folder;
    const Clock::time_point end = Clock::now() + wait;
    for(;;) {
        Containers::String fault;
        {
            const SignalBlock block;
            const Attempt result = attempt(folders, fault);
            if(result == Attempt::Held) {
                removeLockOnSignals(**_parent, *_folder);
                sign(command);
                return {};
            }
            if(fault.isEmpty() && Clock::now() >= end)
                fault =
                    Utility::format("the project is in use by {}", holder());
            _file = Descriptor{};
            if(!fault.isEmpty()) {
                ::unlinkat(**_parent, StagingFolder, AT_REMOVEDIR);
                return fault;
            }
            if(result == Attempt::Gone)
                continue;
        }
        ::nanosleep(&Pause, nullptr);
    }
}

ProjectLock::Attempt ProjectLock::attempt(
    const ProjectFolders& folders, Containers::String& fault) {
    const Attempt result = open(folders, fault);
    if(result != Attempt::Held)
        return result;
    if(::flock(*_file, LOCK_EX | LOCK_NB) != 0) {
        if(errno == EWOULDBLOCK || errno == EINTR)
            return Attempt::Busy;
        fault = Host::fault("lock", folders.file);
        return Attempt::Failed;
    }
    /* Who had it before may have removed it meanwhile */
    if(!isCurrent(**_parent, StagingFolder, *_folder) ||
        !isCurrent(*_folder, LockName, *_file))
        return Attempt::Gone;
    if(lockRealFolder(folders))
        return Attempt::Held;
    ::unlinkat(*_folder, LockName, 0);
    return Attempt::Busy;
}

/* Somebody else may have the same project through a link from another folder,
   with a lock there. Not all file systems can lock folders, so this is only for
   such links. */
bool ProjectLock::lockRealFolder(const ProjectFolders& folders) {
    Containers::String folder, name;
    if(!folders.resolve({}, folder, name).isEmpty())
        return true;
    _realFolder = openFolder(AT_FDCWD, folder, true);
    return !_realFolder || ::flock(*_realFolder, LOCK_EX | LOCK_NB) == 0 ||
        errno != EWOULDBLOCK;
}

ProjectLock::Attempt ProjectLock::open(
    const ProjectFolders& folders, Containers::String& fault) {
    const Containers::String folder =
        Utility::Path::join(folders.path(), StagingFolder);
    if(::mkdirat(**_parent, StagingFolder, 0777) != 0 && errno != EEXIST) {
        fault = Host::fault("write to the folder", folders.path());
        return Attempt::Failed;
    }
    _folder = openFolder(**_parent, StagingFolder, false);
    if(_folder)
        _file = Descriptor{::openat(*_folder, LockName,
            O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666)};
    if(_file && isOwnFile(*_file))
        return Attempt::Held;
    /* Who had the lock removed the folder */
    if(!_file && errno == ENOENT)
        return Attempt::Gone;
    fault = _file || errno == ELOOP || errno == ENOTDIR
        ? Utility::format("{} isn't from this program; remove it", folder)
        : Host::fault("use the folder", folder);
    return Attempt::Failed;
}

Containers::String ProjectLock::holder() const {
    char text[256];
    const ssize_t size = ::pread(*_file, text, sizeof(text), 0);
    const Containers::StringView line{text, std::size_t(size < 0 ? 0 : size)};
    return line.contains('\n') ? line.partition('\n')[0] : "another process";
}

/* Only for those that wait, so failing is none */
void ProjectLock::sign(Containers::StringView command) const {
    char host[256]{};
    ::gethostname(host, sizeof(host) - 1);
    const Containers::String text =
        Utility::format("'{}' (process {} on {})\n", command, ::getpid(), host);
    if(::ftruncate(*_file, 0) == 0)
        static_cast<void>(::pwrite(*_file, text.data(), text.size(), 0));
}

}}
