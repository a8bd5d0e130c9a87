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

/* As the old file, or as any new file would be */
mode_t modeFor(const char* file) {
    struct stat status;
    if(::stat(file, &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/* Renaming would put a file in the place of a device, too */
bool isReplaceable(const char* file) {
    struct stat status;
    if(::stat(file, &status) != 0 || S_ISREG(status.st_mode))
        return true;
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return false;
}

bool writeTemporary(
    int descriptor, mode_t mode, Containers::StringView content) {
    /* Refused where there are no permissions, which then are no loss */
    ::fchmod(descriptor, mode);
    const bool written =
        writeAll(descriptor, content) && ::fsync(descriptor) == 0;
    const int error = errno;
    const bool closed = ::close(descriptor) == 0;
    if(!written)
        errno = error;
    return written && closed;
}

}

Containers::String replaceFile(
    Containers::StringView file, Containers::StringView content) {
    const Containers::String target = resolved(file);
    Containers::String temporary = target + ".XXXXXX";

    const int descriptor = isReplaceable(target.data())
        ? ::mkostemp(temporary.data(), O_CLOEXEC)
        : -1;
    if(descriptor >= 0 &&
        writeTemporary(descriptor, modeFor(target.data()), content) &&
        std::rename(temporary.data(), target.data()) == 0) {
        syncFolder(target);
        return {};
    }

    const int error = errno;
    if(descriptor >= 0)
        ::unlink(temporary.data());
    return Utility::format("can't write {}: {}", file, std::strerror(error));
}

}
