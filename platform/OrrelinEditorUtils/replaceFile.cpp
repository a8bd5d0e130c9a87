#include "OrrelinEditorUtils/replaceFile.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

namespace OrrelinEngine {

namespace {

bool writeAll(int descriptor, Containers::StringView content) {
    const char* data = content.data();
    std::size_t left = content.size();
    while(left) {
        const ssize_t written = ::write(descriptor, data, left);
        if(written < 0 && errno == EINTR)
            continue;
        if(written <= 0)
            return false;
        data += written;
        left -= std::size_t(written);
    }
    return true;
}

/* Through links to what they point to, so that they stay links */
Containers::String resolved(Containers::StringView file) {
    const Containers::String path =
        Containers::String::nullTerminatedView(file);
    if(char* const real = ::realpath(path.data(), nullptr)) {
        Containers::String out{real};
        std::free(real);
        return out;
    }

    /* Nothing is there yet, but there may be a link to it. The error is
       another if links form a circle. */
    char target[PATH_MAX];
    const ssize_t size =
        errno == ENOENT ? ::readlink(path.data(), target, sizeof(target)) : -1;
    return size < 0
        ? Containers::String{file}
        : resolved(Utility::Path::join(
              Utility::Path::split(file).first(), {target, std::size_t(size)}));
}

/* The renaming survives a power loss only once the folder is on the disk.
   What is saved by then is saved, so failing here is none. */
void syncFolder(Containers::StringView file) {
    const Containers::StringView folder = Utility::Path::split(file).first();
    const int descriptor =
        ::open(folder.isEmpty() ? "." : Containers::String{folder}.data(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if(descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

/* Of any new file */
mode_t usualMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/* Renaming would put a file in the place of a device, too, and in that of a file
   that nobody may write to, as locks of version control make it */
Containers::StringView oldFault(const char* file, const struct stat& old) {
    if(S_ISDIR(old.st_mode))
        return std::strerror(EISDIR);
    if(!S_ISREG(old.st_mode))
        return "it is not a regular file";
    if(!(old.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)))
        return "it is read-only";
    return ::faccessat(AT_FDCWD, file, W_OK, AT_EACCESS) == 0
        ? Containers::StringView{}
        : std::strerror(errno);
}

bool readsSame(int descriptor, Containers::StringView content) {
    char chunk[16384];
    for(;;) {
        const ssize_t size = ::read(descriptor, chunk, sizeof(chunk));
        if(size < 0 && errno == EINTR)
            continue;
        if(size <= 0)
            return !size && content.isEmpty();
        if(std::size_t(size) > content.size() ||
            std::memcmp(chunk, content.data(), std::size_t(size)) != 0)
            return false;
        content = content.exceptPrefix(std::size_t(size));
    }
}

bool hasContent(
    const char* file, const struct stat& old, Containers::StringView content) {
    if(!S_ISREG(old.st_mode) || std::size_t(old.st_size) != content.size())
        return false;
    const int descriptor = ::open(file, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if(descriptor < 0)
        return false;
    const bool same = readsSame(descriptor, content);
    ::close(descriptor);
    return same;
}

/* As the old file if there is one. What is refused here are owners that only an
   administrator may set, and permissions where there are none; the file is
   written all the same. */
void setOwnerAndMode(int descriptor, const struct stat* old) {
    if(old && ::fchown(descriptor, old->st_uid, old->st_gid) != 0 &&
        ::fchown(descriptor, uid_t(-1), old->st_gid) != 0)
        errno = 0;
    ::fchmod(descriptor, old ? old->st_mode & 07777 : usualMode());
}

bool writeTemporary(
    int descriptor, const struct stat* old, Containers::StringView content) {
    setOwnerAndMode(descriptor, old);
    const bool written =
        writeAll(descriptor, content) && ::fsync(descriptor) == 0;
    const int error = errno;
    const bool closed = ::close(descriptor) == 0;
    if(!written)
        errno = error;
    return written && closed;
}

Containers::StringView put(Containers::StringView target,
    const struct stat* old, Containers::StringView content) {
    Containers::String temporary = target + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if(descriptor < 0)
        return std::strerror(errno);
    if(writeTemporary(descriptor, old, content) &&
        std::rename(temporary.data(), target.data()) == 0) {
        syncFolder(target);
        return {};
    }
    const int error = errno;
    ::unlink(temporary.data());
    return std::strerror(error);
}

}

Containers::String replaceFile(
    Containers::StringView file, Containers::StringView content) {
    const Containers::String target = resolved(file);
    struct stat old;
    const bool exists = ::stat(target.data(), &old) == 0;
    if(exists && hasContent(target.data(), old, content))
        return {};

    Containers::StringView fault =
        exists ? oldFault(target.data(), old) : Containers::StringView{};
    if(fault.isEmpty())
        fault = put(target, exists ? &old : nullptr, content);
    return fault.isEmpty() ? Containers::String{}
                           : Utility::format("can't write {}: {}", file, fault);
}

}
