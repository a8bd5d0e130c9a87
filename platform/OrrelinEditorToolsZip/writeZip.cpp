#include "editor/Zip.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <zip.h>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Format.h>

#include "OrrelinEditorUtils/replaceFile.h"

namespace OrrelinEngine {

namespace {

typedef Containers::ArrayView<const char> Content;
typedef std::unique_ptr<zip_t, decltype(&zip_discard)> Archive;
typedef std::unique_ptr<zip_source_t, decltype(&zip_source_free)> Source;

/* The first day that an archive can tell, so that the bytes don't depend on
   when it is written */
constexpr zip_uint16_t Time = 0;
constexpr zip_uint16_t Date = 1 << 5 | 1;

/* A regular file that its owner may write to. libzip would let everybody. */
constexpr zip_uint32_t Attributes = 0100644u << 16;

/* libzip's own default, 9, takes much longer for hardly less */
constexpr zip_uint32_t Level = 6;

bool equal(Content a, Content b) {
    return a.size() == b.size() &&
        (a.isEmpty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

/* These and those below return what is wrong, nothing if all is well */
Containers::String addNew(zip_t* archive, const char* name, Content content) {
    Source source{zip_source_buffer(archive, content.data(), content.size(), 0),
        zip_source_free};
    const zip_int64_t index = source
        ? zip_file_add(archive, name, source.get(), ZIP_FL_ENC_UTF_8)
        : -1;
    if(index < 0)
        return zip_error_code_zip(zip_get_error(archive)) == ZIP_ER_INVAL
            ? "the name is not UTF-8"
            : zip_strerror(archive);

    static_cast<void>(source.release());
    if(zip_set_file_compression(
           archive, zip_uint64_t(index), ZIP_CM_DEFLATE, Level) < 0 ||
        zip_file_set_dostime(archive, zip_uint64_t(index), Time, Date, 0) < 0 ||
        zip_file_set_external_attributes(
            archive, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX, Attributes) < 0)
        return zip_strerror(archive);
    return {};
}

Containers::String add(zip_t* archive, Containers::Array<Content>& added,
    Containers::StringView name, Content content) {
    /* libzip would cut such a name */
    if(name.size() > UINT16_MAX || name.contains('\0'))
        return "the name is too long or has a zero byte";
    if(name.isEmpty())
        return "the name is empty";

    const Containers::String terminated =
        Containers::String::nullTerminatedView(name);
    const zip_int64_t same = zip_name_locate(archive, terminated.data(), 0);
    if(same < 0) {
        arrayAppend(added, content);
        return addNew(archive, terminated.data(), content);
    }
    if(equal(added[std::size_t(same)], content))
        return {};
    return "two different contents have this name";
}

Containers::String addAll(zip_t* archive,
    const Containers::StringIterable& names,
    Containers::ArrayView<const Content> contents) {
    /* In the positions that they have in the archive */
    Containers::Array<Content> added;
    for(std::size_t i = 0; i != names.size(); ++i) {
        const Containers::String fault =
            add(archive, added, names[i], contents[i]);
        if(!fault.isEmpty())
            return Utility::format("entry {}: {}", names[i], fault);
    }
    return {};
}

Containers::String readAll(
    zip_source_t* source, Containers::Array<char>& content) {
    zip_stat_t status;
    if(zip_source_stat(source, &status) < 0 || zip_source_open(source) < 0)
        return zip_error_strerror(zip_source_error(source));

    content = Containers::Array<char>{Corrade::NoInit, status.size};
    const zip_int64_t read =
        zip_source_read(source, content.data(), content.size());
    zip_source_close(source);
    if(read < 0 || std::size_t(read) != content.size())
        return zip_error_strerror(zip_source_error(source));
    return {};
}

Containers::String pack(const Containers::StringIterable& names,
    Containers::ArrayView<const Content> contents,
    Containers::Array<char>& packed) {
    /* libzip makes none and would remove what is there */
    if(names.isEmpty())
        return "there are no entries";

    const Source memory{
        zip_source_buffer_create(nullptr, 0, 0, nullptr), zip_source_free};
    Archive archive{!memory ? nullptr
                            : zip_open_from_source(memory.get(),
                                  ZIP_CREATE | ZIP_TRUNCATE, nullptr),
        zip_discard};
    if(!archive)
        return "out of memory";
    /* Otherwise it would go with the archive */
    zip_source_keep(memory.get());

    Containers::String fault = addAll(archive.get(), names, contents);
    if(!fault.isEmpty())
        return fault;
    if(zip_close(archive.get()) < 0)
        return zip_strerror(archive.get());
    static_cast<void>(archive.release());
    return readAll(memory.get(), packed);
}

}

Result writeZip(const Containers::StringIterable& names,
    Containers::ArrayView<const Content> contents,
    Containers::StringView zipPath) {
    CORRADE_ASSERT(names.size() == contents.size(),
        "writeZip(): got" << names.size() << "names for" << contents.size()
                          << "contents",
        Result{});

    Containers::Array<char> packed;
    Containers::String fault = pack(names, contents, packed);
    if(!fault.isEmpty())
        return Result{Utility::format("can't write {}: {}", zipPath, fault)};

    fault = replaceFile(zipPath, {packed.data(), packed.size()});
    return fault.isEmpty() ? Result{} : Result{std::move(fault)};
}

}
