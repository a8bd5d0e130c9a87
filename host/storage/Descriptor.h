#ifndef Orrelin_host_storage_Descriptor_h
#define Orrelin_host_storage_Descriptor_h

#include <cerrno>
#include <utility>
#include <unistd.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* A file descriptor, closed at the end. Closing leaves errno as it is. */
class Descriptor {
public:
    explicit Descriptor(int descriptor = -1) noexcept:
        _descriptor{descriptor} {}

    Descriptor(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept:
        _descriptor{std::exchange(other._descriptor, -1)} {}

    ~Descriptor() {
        const int error = errno;
        if(_descriptor >= 0)
            ::close(_descriptor);
        errno = error;
    }

    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(_descriptor, other._descriptor);
        return *this;
    }

    explicit operator bool() const { return _descriptor >= 0; }
    int operator*() const { return _descriptor; }

    /* For another owner */
    int release() { return std::exchange(_descriptor, -1); }

private:
    int _descriptor;
};

}}

#endif
