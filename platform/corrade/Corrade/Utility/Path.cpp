#include "Corrade/Utility/Path.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/Containers/Pair.h"
#include "Corrade/Containers/StringIterable.h"
#include "Corrade/Containers/StringStl.h"

namespace Corrade { namespace Utility { namespace Path {

using namespace Containers::Literals;

namespace {

/* The error code is taken before anything is printed, as that can change it */
void fail(const char* const what, const Containers::StringView path,
    const int error = errno) {
    Error{} << what << path << Debug::nospace << ": error" << error << "("
            << Debug::nospace
            << Containers::String{std::generic_category().message(error)}
            << Debug::nospace << ")";
}

/* Closes the file on destruction if close() wasn't called */
class File {
public:
    explicit File(const Containers::StringView filename, const int flags):
        _descriptor{
            ::open(Containers::String::nullTerminatedView(filename).data(),
                flags | O_CLOEXEC, 0666)} {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if(*this)
            close();
    }

    explicit operator bool() const { return _descriptor != -1; }
    int descriptor() const { return _descriptor; }

    bool close() {
        const int descriptor = _descriptor;
        _descriptor = -1;
        return ::close(descriptor) == 0;
    }

private:
    int _descriptor;
};

/* Calls again if interrupted by a signal */
template<class Call> ssize_t uninterrupted(const Call call) {
    ssize_t out;
    do
        out = call();
    while(out == -1 && errno == EINTR);
    return out;
}

bool status(const Containers::StringView path, struct stat& out) {
    return ::stat(Containers::String::nullTerminatedView(path).data(), &out) ==
        0;
}

Containers::StringView withoutTrailingSlashes(Containers::StringView path) {
    while(path.size() > 1 && path.hasSuffix('/'))
        path = path.exceptSuffix(1);
    return path;
}

}

Containers::Pair<Containers::StringView, Containers::StringView> split(
    const Containers::StringView path) {
    const Containers::StringView slash = path.findLastOr('/', path.begin());
    const Containers::StringView root = path.prefix(slash.end());
    return {root == "/"_s || root == "//"_s ? root : path.prefix(slash.begin()),
        path.suffix(slash.end())};
}

Containers::StringView path(const Containers::StringView filename) {
    return split(filename).first();
}

Containers::StringView filename(const Containers::StringView path) {
    return split(path).second();
}

Containers::Pair<Containers::StringView, Containers::StringView> splitExtension(
    const Containers::StringView path) {
    const Containers::StringView name = filename(path);
    const Containers::StringView dot = name.findLastOr('.', name.end());
    const bool initial = !name.prefix(dot.begin()).trimmed("."_s);
    const char* const end = initial ? path.end() : dot.begin();
    return {path.prefix(end), path.suffix(end)};
}

Containers::String join(
    const Containers::StringView path, const Containers::StringView filename) {
    if(!path || filename.hasPrefix('/'))
        return filename;
    return path.hasSuffix('/') ? path + filename : "/"_s.join({path, filename});
}

Containers::String join(const Containers::StringIterable& paths) {
    Containers::String out;
    for(std::size_t i = 0; i != paths.size(); ++i)
        out = i ? join(out, paths[i]) : Containers::String{paths[i]};
    return out;
}

bool exists(const Containers::StringView filename) {
    struct stat info;
    return status(filename, info);
}

bool isDirectory(const Containers::StringView path) {
    struct stat info;
    return status(path, info) && S_ISDIR(info.st_mode);
}

bool make(const Containers::StringView path) {
    const Containers::StringView directory = withoutTrailingSlashes(path);
    if(!directory || isDirectory(directory))
        return true;

    /* A failure of a parent has printed its message already */
    const Containers::StringView parent =
        withoutTrailingSlashes(split(directory).first());
    if(!make(parent))
        return false;

    /* Someone else could have made it meanwhile */
    if(::mkdir(
           Containers::String::nullTerminatedView(directory).data(), 0777) == 0)
        return true;
    const int error = errno;
    if(error == EEXIST && isDirectory(directory))
        return true;

    fail("Utility::Path::make(): can't create", directory, error);
    return false;
}

bool remove(const Containers::StringView path) {
    if(std::remove(Containers::String::nullTerminatedView(path).data()) == 0)
        return true;

    fail("Utility::Path::remove(): can't remove", path);
    return false;
}

bool move(const Containers::StringView from, const Containers::StringView to) {
    if(std::rename(Containers::String::nullTerminatedView(from).data(),
           Containers::String::nullTerminatedView(to).data()) == 0)
        return true;

    const int error = errno;
    fail("Utility::Path::move(): can't move", from + " to "_s + to, error);
    return false;
}

Containers::Optional<Containers::String> currentDirectory() {
    std::error_code error;
    const std::filesystem::path out = std::filesystem::current_path(error);
    if(!error)
        return Containers::String{out.native()};

    fail("Utility::Path::currentDirectory(): can't get the path of", "."_s,
        error.value());
    return {};
}

Containers::Optional<Containers::Array<Containers::String>> list(
    const Containers::StringView path, const ListFlags flags) {
    DIR* const directory =
        ::opendir(Containers::String::nullTerminatedView(path).data());
    if(!directory) {
        fail("Utility::Path::list(): can't list", path);
        return {};
    }

    Containers::Array<Containers::String> out;
    for(;;) {
        errno = 0;
        const dirent* const entry = ::readdir(directory);
        if(!entry)
            break;

        const Containers::StringView name = entry->d_name;
        if(flags >= ListFlag::SkipDotAndDotDot &&
            (name == "."_s || name == ".."_s))
            continue;

        if(flags & (ListFlag::SkipFiles | ListFlag::SkipDirectories)) {
            struct stat info;
            if(status(join(path, name), info) &&
                ((flags >= ListFlag::SkipFiles && S_ISREG(info.st_mode)) ||
                    (flags >= ListFlag::SkipDirectories &&
                        S_ISDIR(info.st_mode))))
                continue;
        }

        arrayAppend(out, InPlaceInit, name);
    }

    const int error = errno;
    ::closedir(directory);
    if(error) {
        fail("Utility::Path::list(): can't list", path, error);
        return {};
    }

    if(flags >= ListFlag::SortAscending)
        std::sort(out.begin(), out.end());
    return Containers::optional(std::move(out));
}

Containers::Optional<std::size_t> size(const Containers::StringView filename) {
    struct stat info;
    if(status(filename, info))
        return std::size_t(info.st_size);

    fail("Utility::Path::size(): can't get the size of", filename);
    return {};
}

Containers::Optional<Containers::Array<char>> read(
    const Containers::StringView filename) {
    File file{filename, O_RDONLY};
    struct stat info;
    if(!file || ::fstat(file.descriptor(), &info) == -1) {
        fail("Utility::Path::read(): can't open", filename);
        return {};
    }

    /* The size is just a hint. One byte more to find the end without having to
       grow, another one for a null terminator of readString(). */
    Containers::Array<char> out;
    arrayReserve(out, std::size_t(info.st_size) + 2);
    for(;;) {
        const std::size_t size = out.size();
        const std::size_t spare = arrayCapacity(out) - size;
        const Containers::ArrayView<char> chunk =
            arrayAppend(out, NoInit, spare ? spare : 4096);
        const ssize_t count = uninterrupted([&] {
            return ::read(file.descriptor(), chunk.data(), chunk.size());
        });
        if(count == -1) {
            fail("Utility::Path::read(): can't read", filename);
            return {};
        }
        arrayResize(out, NoInit, size + count);
        if(!count)
            return Containers::optional(std::move(out));
    }
}

Containers::Optional<Containers::String> readString(
    const Containers::StringView filename) {
    Containers::Optional<Containers::Array<char>> data = read(filename);
    if(!data)
        return {};

    arrayAppend(*data, '\0');
    const std::size_t size = data->size() - 1;
    const auto deleter = data->deleter();
    return Containers::String{data->release(), size, deleter};
}

bool write(const Containers::StringView filename,
    const Containers::ArrayView<const void> data) {
    File file{filename, O_WRONLY | O_CREAT | O_TRUNC};
    if(!file) {
        fail("Utility::Path::write(): can't open", filename);
        return false;
    }

    const char* at = static_cast<const char*>(data.data());
    const char* const end = at + data.size();
    while(at != end) {
        const ssize_t count = uninterrupted(
            [&] { return ::write(file.descriptor(), at, end - at); });
        if(count == -1)
            break;
        at += count;
    }

    /* Some errors are reported only once the file gets closed */
    if(at == end && file.close())
        return true;
    fail("Utility::Path::write(): can't write", filename);
    return false;
}

}}}
