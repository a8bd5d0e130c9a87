#include "editor/Zip.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <zip.h>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "editor/StringArray.h"

namespace OrrelinEngine {

namespace {

typedef std::unique_ptr<zip_t, decltype(&zip_discard)> Archive;
typedef std::unique_ptr<zip_file_t, decltype(&zip_fclose)> File;

/* Of all that is read from an archive */
constexpr std::uint64_t MaxSize = std::uint64_t{2} << 30;

/* Deflate tells 258 bytes by two bits at best */
constexpr std::uint64_t MaxRatio = 1032;

bool isWanted(
    Containers::StringView name, const Containers::StringIterable& extensions) {
    /* A folder */
    if(name.hasSuffix('/'))
        return false;
    const Containers::StringView extension =
        Utility::Path::splitExtension(name).second();
    for(const Containers::StringView i: extensions)
        if(i == extension)
            return true;
    return false;
}

/* These and those below return what is wrong, nothing if all is well */
Containers::StringView fault(const zip_stat_t& entry, std::uint64_t room) {
    if(entry.encryption_method != ZIP_EM_NONE)
        return "it is encrypted";
    /* How much memory it takes to unpack the others is up to the archive */
    if(entry.comp_method != ZIP_CM_STORE && entry.comp_method != ZIP_CM_DEFLATE)
        return "it is packed in an unsupported way";
    if(entry.size > room)
        return "all together are larger than 2 GiB";
    if(entry.comp_method == ZIP_CM_STORE
            ? entry.size != entry.comp_size
            : entry.size / MaxRatio > entry.comp_size)
        return "its size can't be true";
    return {};
}

/* Before anything is unpacked, so that it costs little to refuse an archive */
Containers::String choose(zip_t* archive,
    const Containers::StringIterable& extensions, std::uint64_t packedRoom,
    Containers::Array<zip_stat_t>& chosen) {
    const zip_uint64_t count = zip_uint64_t(zip_get_num_entries(archive, 0));
    std::uint64_t room = MaxSize;
    for(zip_uint64_t i = 0; i != count; ++i) {
        zip_stat_t entry;
        if(zip_stat_index(archive, i, 0, &entry) < 0)
            return zip_strerror(archive);
        if(!isWanted(entry.name, extensions))
            continue;
        if(const Containers::StringView reason = fault(entry, room))
            return Utility::format("entry {}: {}", entry.name, reason);
        if(entry.comp_size > packedRoom)
            return Utility::format("entry {}: it overlaps others", entry.name);
        room -= entry.size;
        packedRoom -= entry.comp_size;
        arrayAppend(chosen, entry);
    }
    return {};
}

/* The size that an entry claims is bounded by what it's packed in */
Containers::String unpack(
    zip_t* archive, const zip_stat_t& entry, Containers::Array<char>& content) {
    const File file{zip_fopen_index(archive, entry.index, 0), zip_fclose};
    if(!file)
        return zip_strerror(archive);

    content = Containers::Array<char>{Corrade::NoInit, std::size_t(entry.size)};
    std::size_t size = 0;
    zip_int64_t read = 1;
    while(size != content.size() &&
        (read = zip_fread(
             file.get(), content.data() + size, content.size() - size)) > 0)
        size += std::size_t(read);
    if(!read)
        return "it is smaller than it claims to be";
    /* The read of nothing compares the checksum */
    char more;
    if(read > 0 && (read = zip_fread(file.get(), &more, 1)) > 0)
        return "it is larger than it claims to be";
    return read < 0 ? Containers::String{zip_file_strerror(file.get())}
                    : Containers::String{};
}

Containers::String unpackAll(zip_t* archive,
    Containers::ArrayView<const zip_stat_t> entries,
    Containers::Array<Containers::Array<char>>& contents) {
    for(const zip_stat_t& entry: entries) {
        Containers::Array<char> content;
        const Containers::String reason = unpack(archive, entry, content);
        if(!reason.isEmpty())
            return Utility::format("entry {}: {}", entry.name, reason);
        arrayAppend(contents, std::move(content));
    }
    return {};
}

/* libzip takes an empty file for an archive without entries, and would wait
   for somebody to write into a pipe */
Containers::StringView fileFault(const char* file, std::uint64_t& size) {
    struct stat status;
    if(::stat(file, &status) != 0)
        return std::strerror(errno);
    if(S_ISDIR(status.st_mode))
        return std::strerror(EISDIR);
    if(!S_ISREG(status.st_mode))
        return "it is not a regular file";
    size = std::uint64_t(status.st_size);
    if(!size)
        return "it is empty";
    return {};
}

Containers::String open(
    const char* file, Archive& archive, std::uint64_t& size) {
    if(const Containers::StringView reason = fileFault(file, size))
        return reason;

    int code;
    archive.reset(zip_open(file, ZIP_RDONLY, &code));
    if(archive)
        return {};
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    Containers::String reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    return reason;
}

}

Result readZip(MutableStringArrayView& names,
    const Containers::StringIterable& extensions,
    Containers::Array<Containers::Array<char>>& contents,
    Containers::StringView zipPath) {
    /* The names of the entries are the archive's */
    Archive archive{nullptr, zip_discard};
    Containers::Array<zip_stat_t> entries;
    Containers::Array<Containers::Array<char>> unpacked;

    std::uint64_t size = 0;
    Containers::String reason = open(
        Containers::String::nullTerminatedView(zipPath).data(), archive, size);
    if(reason.isEmpty())
        reason = choose(archive.get(), extensions, size, entries);
    if(reason.isEmpty())
        reason = unpackAll(archive.get(), entries, unpacked);
    if(!reason.isEmpty())
        return Result{Utility::format("can't read {}: {}", zipPath, reason)};

    for(const zip_stat_t& entry: entries)
        names.add(entry.name);
    for(Containers::Array<char>& content: unpacked)
        arrayAppend(contents, std::move(content));
    return Result{};
}

}
