#include "archiveLimit.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <zip.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "editor/AllLanguages.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef std::unique_ptr<zip_t, decltype(&zip_discard)> Archive;

constexpr std::uint64_t MiB = std::uint64_t{1} << 20;

Archive open(const Containers::String& path) {
    return Archive{zip_open(path.data(), ZIP_RDONLY, nullptr), zip_discard};
}

struct Claims {
    std::uint64_t count = 0;
    std::uint64_t size = 0;
};

/* Of the entries that would be unpacked */
Claims claimsOf(zip_t* archive) {
    Claims out;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for(zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t entry;
        if(zip_stat_index(archive, zip_uint64_t(i), 0, &entry) < 0 ||
            Utility::Path::splitExtension(entry.name).second() != ".json")
            continue;
        ++out.count;
        out.size += std::min(entry.size, UINT64_MAX - out.size);
    }
    return out;
}

std::uint64_t believable(Project& project, std::uint64_t count) {
    if(project.options().maxArchive)
        return project.options().maxArchive * MiB;
    std::uint64_t size = 0;
    for(const Term& term: project.terms())
        size += term.key.size() + term.source.size() + 32;
    return 16 * MiB +
        std::min(count, std::uint64_t{AllLanguageCount}) * size * 16;
}

}

bool isPutByPrograms(Containers::StringView name) {
    const Containers::StringView file = Utility::Path::split(name).second();
    return name.hasPrefix("__MACOSX/") || file.hasPrefix("._") ||
        file == ".DS_Store";
}

std::vector<Containers::String> entriesOf(const Containers::String& path) {
    std::vector<Containers::String> out;
    const Archive archive = open(path);
    const zip_int64_t count =
        archive ? zip_get_num_entries(archive.get(), 0) : 0;
    for(zip_int64_t i = 0; i < count; ++i)
        if(const char* const name =
                zip_get_name(archive.get(), zip_uint64_t(i), 0))
            out.push_back(name);
    return out;
}

Containers::String archiveFault(Project& project, Containers::StringView name,
    const Containers::String& path) {
    const Archive archive = open(path);
    /* Whoever reads it tells what is wrong */
    if(!archive)
        return {};
    const Claims claims = claimsOf(archive.get());
    const std::uint64_t limit = believable(project, claims.count);
    if(claims.size <= limit)
        return {};
    return Utility::format("{} unpacks to {} MiB, but the files of this "
                           "project to {} at most; --max-archive allows more",
        name, claims.size / MiB + 1, limit / MiB);
}

}}
