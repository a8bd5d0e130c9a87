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
    return {};
}

/* Before anything is unpacked, so that it costs little to refuse an archive */
Containers::String choose(zip_t* archive,
    const Containers::StringIterable& extensions,
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
        room -= entry.size;
        arrayAppend(chosen, entry);
    }
    return {};
}

/* Grows with what really comes out. The size that an entry claims is believed
   only as its end. */
Containers::String unpack(
    zip_t* archive, const zip_stat_t& entry, Containers::Array<char>& content) {
    const File file{zip_fopen_index(archive, entry.index, 0), zip_fclose};
    if(!file)
        return zip_strerror(archive);

    char chunk[16384];
    /* The last read, of nothing, compares the checksum */
    zip_int64_t read;
    while((read = zip_fread(file.get(), chunk, sizeof(chunk))) > 0) {
        if(std::uint64_t(read) > entry.size - content.size())
            return "it is larger than it claims to be";
        arrayAppend(content,
            Containers::ArrayView<const char>{chunk, std::size_t(read)});
    }
    if(read < 0)
        return zip_file_strerror(file.get());
    if(content.size() != entry.size)
        return "it is smaller than it claims to be";
    return {};
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
Containers::StringView fileFault(const char* file) {
    struct stat status;
    if(::stat(file, &status) != 0)
        return std::strerror(errno);
    if(S_ISDIR(status.st_mode))
        return std::strerror(EISDIR);
    if(!S_ISREG(status.st_mode))
        return "it is not a regular file";
    if(!status.st_size)
        return "it is empty";
    return {};
}

Containers::String open(const char* file, Archive& archive) {
    if(const Containers::StringView reason = fileFault(file))
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

    Containers::String reason =
        open(Containers::String::nullTerminatedView(zipPath).data(), archive);
    if(reason.isEmpty())
        reason = choose(archive.get(), extensions, entries);
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
