#include "Corrade/Utility/Path.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/Containers/Pair.h"
#include "Corrade/Containers/StringIterable.h"
#include "Corrade/Containers/StringStl.h"

namespace Corrade { namespace Utility { namespace Path {

using namespace Containers::Literals;

namespace {

void printError(const char* const what, const Containers::StringView path,
    const std::error_code& error) {
    Error{} << "Utility::Path::" << Debug::nospace << what << path
            << Debug::nospace << ":" << error.message().c_str();
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::filesystem::path native(const Containers::StringView path) {
    return {path.begin(), path.end()};
}

std::FILE* open(const Containers::StringView filename, const char* const mode) {
    return std::fopen(
        Containers::String::nullTerminatedView(filename).data(), mode);
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

Containers::Pair<Containers::StringView, Containers::StringView> splitExtension(
    const Containers::StringView path) {
    const Containers::StringView name = split(path).second();
    const char* begin = name.begin();
    while(begin != name.end() && *begin == '.')
        ++begin;
    const char* const dot =
        name.suffix(begin).findLastOr('.', path.end()).begin();
    return {path.prefix(dot), path.suffix(dot)};
}

Containers::String join(
    const Containers::StringView path, const Containers::StringView filename) {
    if(!path || filename.hasPrefix('/'))
        return filename;
    return path.hasSuffix('/') ? path + filename : "/"_s.join({path, filename});
}

Containers::String join(const Containers::StringIterable& paths) {
    Containers::String out;
    for(const Containers::StringView i: paths)
        out = join(out, i);
    return out;
}

bool exists(const Containers::StringView filename) {
    std::error_code error;
    return std::filesystem::exists(native(filename), error);
}

bool isDirectory(const Containers::StringView path) {
    std::error_code error;
    return std::filesystem::is_directory(native(path), error);
}

bool make(const Containers::StringView path) {
    std::error_code error;
    if(path)
        std::filesystem::create_directories(native(path), error);
    if(error)
        printError("make(): can't create", path, error);
    return !error;
}

bool remove(const Containers::StringView path) {
    if(std::remove(Containers::String::nullTerminatedView(path).data()) == 0)
        return true;
    printError("remove(): can't remove", path, lastError());
    return false;
}

bool move(const Containers::StringView from, const Containers::StringView to) {
    std::error_code error;
    std::filesystem::rename(native(from), native(to), error);
    if(error)
        printError("move(): can't move", " to "_s.join({from, to}), error);
    return !error;
}

Containers::Optional<Containers::Array<Containers::String>> list(
    const Containers::StringView path) {
    Containers::Array<Containers::String> out;
    arrayAppend(out, Containers::String{"."});
    arrayAppend(out, Containers::String{".."});
    std::error_code error;
    for(std::filesystem::directory_iterator i{native(path), error}, end;
        !error && i != end; i.increment(error))
        arrayAppend(out, Containers::String{i->path().filename().native()});
    if(!error)
        return out;
    printError("list(): can't list", path, error);
    return {};
}

Containers::Optional<std::size_t> size(const Containers::StringView filename) {
    std::error_code error;
    const std::size_t out = std::filesystem::file_size(native(filename), error);
    if(!error)
        return out;
    printError("size(): can't get the size of", filename, error);
    return {};
}

Containers::Optional<Containers::Array<char>> read(
    const Containers::StringView filename) {
    std::FILE* const file = open(filename, "rbe");
    if(!file) {
        printError("read(): can't open", filename, lastError());
        return {};
    }

    /* The size is just a hint. With one byte more, a read of the whole file
       comes back short and ends the loop without growing the array. */
    std::error_code error;
    const std::uintmax_t hint =
        std::filesystem::file_size(native(filename), error);
    Containers::Array<char> out{NoInit, error ? 4096 : std::size_t(hint) + 1};
    std::size_t size = 0;
    while((size += std::fread(out.data() + size, 1, out.size() - size, file)) ==
        out.size()) {
        Containers::Array<char> larger{NoInit, size * 2};
        std::memcpy(larger.data(), out.data(), size);
        out = std::move(larger);
    }

    const bool failed = std::ferror(file);
    const std::error_code fault = lastError();
    std::fclose(file);
    if(!failed)
        return Containers::Array<char>{out.release(), size};
    printError("read(): can't read", filename, fault);
    return {};
}

Containers::Optional<Containers::String> readString(
    const Containers::StringView filename) {
    const Containers::Optional<Containers::Array<char>> data = read(filename);
    if(!data)
        return {};
    return Containers::String{data->data(), data->size()};
}

bool write(const Containers::StringView filename,
    const Containers::ArrayView<const void> data) {
    std::FILE* const file = open(filename, "wbe");
    if(!file) {
        printError("write(): can't open", filename, lastError());
        return false;
    }
    /* Some errors are reported only once the file gets closed */
    const bool written =
        std::fwrite(data.data(), 1, data.size(), file) == data.size();
    if((std::fclose(file) == 0) & written)
        return true;
    printError("write(): can't write", filename, lastError());
    return false;
}

}}}
