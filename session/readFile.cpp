#include "session/readFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace OrrelinEngine {

namespace {

Containers::StringView errorText(int error) {
    return std::strerror(error);
}

/* The usual small pages of memory take longer to get than a large file takes to
   be read into them */
Containers::String memoryFor(std::size_t size) {
    constexpr std::size_t HugePage = std::size_t{2} << 20;
    if(size < HugePage)
        return Containers::String{Corrade::NoInit, size};
    const std::size_t capacity = (size / HugePage + 1) * HugePage;
    char* const data =
        static_cast<char*>(std::aligned_alloc(HugePage, capacity));
    if(!data)
        throw std::bad_alloc{};
#ifdef MADV_HUGEPAGE
    ::madvise(data, capacity, MADV_HUGEPAGE);
#endif
    data[size] = '\0';
    return Containers::String{
        data, size, [](char* memory, std::size_t) { std::free(memory); }};
}

/* Up to the given size; -1 on an error */
ssize_t readAll(int descriptor, char* out, std::size_t size) {
    std::size_t total = 0;
    while(total != size) {
        const ssize_t got = ::read(descriptor, out + total, size - total);
        if(got < 0 && errno == EINTR)
            continue;
        if(got < 0)
            return -1;
        if(!got)
            break;
        total += std::size_t(got);
    }
    return ssize_t(total);
}

Containers::StringView readOpen(int descriptor, Containers::String& content) {
    struct stat status;
    if(::fstat(descriptor, &status) != 0)
        return errorText(errno);
    if(S_ISDIR(status.st_mode))
        return errorText(EISDIR);
    if(!S_ISREG(status.st_mode))
        return "it is not a regular file";
    /* RapidJSON counts with 32 bits */
    if(std::uint64_t(status.st_size) > UINT32_MAX)
        return "it is larger than 4 GiB";

    content = memoryFor(std::size_t(status.st_size));
    const ssize_t size = readAll(descriptor, content.data(), content.size());
    /* Whoever writes it in place may not be done */
    char more;
    const ssize_t rest = size < 0 ? -1 : readAll(descriptor, &more, 1);
    if(rest < 0)
        return errorText(errno);
    return rest || std::size_t(size) != content.size()
        ? "it changed while it was read"
        : Containers::StringView{};
}

}

Containers::StringView readFile(
    Containers::StringView file, Containers::String& content) {
    const int descriptor =
        ::open(Containers::String::nullTerminatedView(file).data(),
            O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if(descriptor < 0)
        return errorText(errno);
    const Containers::StringView fault = readOpen(descriptor, content);
    ::close(descriptor);
    return fault;
}

}
