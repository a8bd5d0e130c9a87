#include "Corrade/Containers/String.h"

#include <cstring>

namespace Corrade { namespace Containers {

namespace {

void keep(char*, std::size_t) {}

String reference(const StringView view) {
    return String{const_cast<char*>(view.data()), view.size(), keep};
}

}

String String::nullTerminatedView(const StringView view) {
    return view.flags() >= StringViewFlag::NullTerminated ? reference(view)
                                                          : String{view};
}

String::String(const char* const data, const std::size_t size):
    String{NoInit, size} {
    CORRADE_ASSERT(data || !size,
        "Containers::String: a null pointer given for a string of size"
            << size, );
    if(size)
        std::memcpy(this->data(), data, size);
}

String::String(
    char* const data, const std::size_t size, const Deleter deleter) noexcept:
    _large{data, deleter, size} {
    CORRADE_ASSERT(data && !data[size],
        "Containers::String: memory to take over has to be null-terminated", );
}

String::String(NoInitT, const std::size_t size): String{} {
    if(size < SmallSize) {
        _small.data[size] = '\0';
        _small.size = size | SmallBit;
    } else
        allocate(size);
}

void String::allocate(const std::size_t size) {
    CORRADE_ASSERT(size < std::size_t(StringViewFlag::NullTerminated),
        "Containers::String: can't have" << size << "bytes", );
    _large = Large{new char[size + 1], nullptr, size};
    _large.data[size] = '\0';
}

void String::destroy() {
    if(_large.deleter)
        _large.deleter(_large.data, _large.size);
    else
        delete[] _large.data;
}

}}
