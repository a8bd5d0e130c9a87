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

struct Entries {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    std::uint64_t size = 0;
};

bool isWanted(Containers::StringView name,
    const Containers::StringIterable& extensions) {
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

/* Nothing if all is well, like those below */
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

/* Grows with what really comes out. What an entry claims is believed only as
   the end of it. */
Containers::String unpack(zip_t* archive, const zip_stat_t& entry,
    Containers::Array<char>& content) {
    const File file{zip_fopen_index(archive, entry.index, 0), zip_fclose};
    if(!file)
        return zip_strerror(archive);

    char chunk[16*1024];
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
    return content.size() == entry.size ? "" : "it is smaller than it claims to be";
}

Containers::String readEntry(zip_t* archive, std::uint64_t index,
    const char* name, Entries& entries) {
    zip_stat_t entry;
    if(zip_stat_index(archive, index, 0, &entry) < 0)
        return zip_strerror(archive);
    if(const Containers::StringView reason =
            fault(entry, MaxSize - entries.size))
        return reason;

    Containers::Array<char> content;
    Containers::String reason = unpack(archive, entry, content);
    entries.size += content.size();
    arrayAppend(entries.names, Corrade::InPlaceInit, name);
    arrayAppend(entries.contents, std::move(content));
    return reason;
}

Containers::String readEntries(zip_t* archive,
    const Containers::StringIterable& extensions, Entries& entries) {
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for(zip_int64_t i = 0; i < count; ++i) {
        const char* const name = zip_get_name(archive, zip_uint64_t(i), 0);
        if(!name)
            return zip_strerror(archive);
        if(!isWanted(name, extensions))
            continue;
        const Containers::String reason =
            readEntry(archive, zip_uint64_t(i), name, entries);
        if(!reason.isEmpty())
            return Utility::format("entry {}: {}", name, reason);
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

Containers::String readFile(const char* file,
    const Containers::StringIterable& extensions, Entries& entries) {
    if(const Containers::StringView reason = fileFault(file))
        return reason;

    int code;
    const Archive archive{zip_open(file, ZIP_RDONLY, &code), zip_discard};
    if(archive)
        return readEntries(archive.get(), extensions, entries);

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
    Entries entries;
    const Containers::String reason =
        readFile(Containers::String::nullTerminatedView(zipPath).data(),
            extensions, entries);
    if(!reason.isEmpty())
        return Result{Utility::format("can't read {}: {}", zipPath, reason)};

    for(const Containers::String& name: entries.names)
        names.add(name);
    for(Containers::Array<char>& content: entries.contents)
        arrayAppend(contents, std::move(content));
    return Result{};
}

}
