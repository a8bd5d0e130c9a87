#include "files.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <dirent.h>
#include <fcntl.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Tracking/TranslationRecord.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* RapidJSON counts in 32 bits */
constexpr off_t MaxSize = off_t{1} << 32;

/* Calls again what a signal interrupted */
template<class F> auto retried(F&& call) {
    for(;;) {
        const auto out = call();
        if(out >= 0 || errno != EINTR)
            return out;
    }
}

Identity identityOf(const struct stat& status) {
    return {0, status.st_dev, status.st_ino, status.st_size, status.st_mtim,
        status.st_ctim};
}

bool equal(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/* Some file systems count in steps of two seconds */
bool isRecent(const timespec& time) {
    return time.tv_sec + 2 >= std::time(nullptr);
}

Containers::String readAll(int file, std::size_t size, FileContent& out) {
    char* const data = new(std::nothrow) char[size + 1];
    if(!data)
        return std::strerror(ENOMEM);
    std::size_t count = 0;
    ssize_t last = 1;
    while(count != size && last > 0) {
        last =
            retried([&] { return ::read(file, data + count, size - count); });
        count += std::size_t(std::max<ssize_t>(last, 0));
    }
    const int error = errno;
    data[count] = '\0';
    out.content = Containers::String{data, count, nullptr};
    return last < 0 ? std::strerror(error) : "";
}

}

Version versionOf(Containers::StringView content) {
    return {true, content.size(), StrHash{}(content)};
}

Version versionOf(const FileContent& file) {
    return file.exists ? versionOf(file.content) : Version{};
}

bool Identity::operator==(const Identity& other) const {
    return error == other.error && device == other.device &&
        inode == other.inode && size == other.size &&
        equal(modified, other.modified) && equal(changed, other.changed);
}

Identity identityOf(const Containers::String& path) {
    struct stat status;
    if(::stat(path.data(), &status) == 0)
        return identityOf(status);
    Identity out;
    out.error = errno;
    return out;
}

FileContent readFile(int folder, const Containers::String& name, int flags) {
    FileContent out;
    const Descriptor file{retried([&] {
        return ::openat(folder, name.data(),
            O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags);
    })};
    struct stat status;
    if(!file) {
        if(errno != ENOENT)
            out.fault = std::strerror(errno);
        else if(::fstatat(folder, name.data(), &status, AT_SYMLINK_NOFOLLOW) ==
                0 &&
            S_ISLNK(status.st_mode))
            out.fault = "it's a link to a file that isn't there";
        else
            /* Missing, even if another command has just made it */
            return out;
        /* As asking for it tells, which may be allowed where reading isn't */
        if(::fstatat(folder, name.data(), &status, 0) == 0)
            out.identity = identityOf(status);
        else
            out.identity.error = errno;
        return out;
    }
    if(::fstat(*file, &status) != 0) {
        out.identity.error = errno;
        out.fault = std::strerror(errno);
        return out;
    }

    out.identity = identityOf(status);
    out.isRecent = isRecent(status.st_ctim);
    if(S_ISDIR(status.st_mode))
        out.fault = std::strerror(EISDIR);
    else if(!S_ISREG(status.st_mode))
        out.fault = "it isn't a regular file";
    else if(status.st_size >= MaxSize)
        out.fault = "it has 4 GiB or more";
    else
        out.fault = readAll(*file, std::size_t(status.st_size), out);
    out.exists = out.fault.isEmpty();
    return out;
}

Containers::String listFolder(const Descriptor& folder,
    std::vector<Containers::String>& names, bool withHidden) {
    names.clear();
    /* A list has a position, and closes its descriptor */
    Descriptor own = openFolder(*folder, ".", false);
    const std::unique_ptr<DIR, int (*)(DIR*)> list{
        own ? ::fdopendir(*own) : nullptr, ::closedir};
    if(!list)
        return std::strerror(errno);
    own.release();

    errno = 0;
    while(const dirent* const entry = ::readdir(list.get())) {
        const Containers::StringView name = entry->d_name;
        if(withHidden ? name != "." && name != ".." : !name.hasPrefix('.'))
            names.emplace_back(name);
        errno = 0;
    }
    if(errno)
        return std::strerror(errno);
    std::sort(names.begin(), names.end());
    return {};
}

Descriptor createFile(
    int folder, const Containers::String& name, bool isPrivate) {
    ::unlinkat(folder, name.data(), 0);
    return Descriptor{retried([&] {
        return ::openat(folder, name.data(),
            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
            isPrivate ? 0600 : 0666);
    })};
}

bool writeAll(int file, Containers::StringView content) {
    while(!content.isEmpty()) {
        const ssize_t count = retried(
            [&] { return ::write(file, content.data(), content.size()); });
        if(count < 0)
            return false;
        content = content.exceptPrefix(std::size_t(count));
    }
    return true;
}

bool writeAndSync(int file, Containers::StringView content) {
    return writeAll(file, content) && sync(file);
}

bool sync(int descriptor) {
    /* Some file systems can't do it with folders */
    return retried([&] { return ::fsync(descriptor); }) == 0 || errno == EINVAL;
}

Descriptor openFolder(
    int parent, const Containers::String& name, bool followsLinks) {
    return Descriptor{retried([&] {
        return ::openat(parent, name.data(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC |
                (followsLinks ? 0 : O_NOFOLLOW));
    })};
}

Containers::String placeFault(
    const Containers::String& folder, const Containers::String& name) {
    const Descriptor opened = openFolder(AT_FDCWD, folder, true);
    struct stat place;
    if(!opened || ::fstat(*opened, &place) != 0 ||
        ::faccessat(AT_FDCWD, folder.data(), W_OK | X_OK, AT_EACCESS) != 0)
        return std::strerror(errno);
    struct statx file;
    if(::statx(*opened, name.data(), AT_SYMLINK_NOFOLLOW, STATX_UID, &file) !=
        0)
        return errno == ENOENT ? "" : std::strerror(errno);
    if(file.stx_attributes & STATX_ATTR_MOUNT_ROOT)
        return "something is mounted there";
    if(file.stx_attributes & (STATX_ATTR_IMMUTABLE | STATX_ATTR_APPEND))
        return std::strerror(EPERM);
    const uid_t user = ::geteuid();
    if((place.st_mode & S_ISVTX) && user != 0 && user != place.st_uid &&
        user != file.stx_uid)
        return "it belongs to somebody else, and its folder keeps it so";
    return {};
}

Containers::String fault(
    Containers::StringView verb, Containers::StringView file, int error) {
    return Utility::format("can't {} {}: {}", verb, file, std::strerror(error));
}

Containers::String folderOf(Containers::StringView path) {
    const Containers::StringView out = Utility::Path::split(path).first();
    return out.isEmpty() ? "." : out;
}

bool isPlainName(Containers::StringView name) {
    return name.size() <= 255 && !name.hasPrefix('.') &&
        (name.hasSuffix(".json") || name.hasSuffix(".zip") ||
            name == Tracking::TranslationRecord::FileName) &&
        std::none_of(name.begin(), name.end(),
            [](char c) { return c == '/' || (c >= '\0' && c < ' '); });
}

}}
