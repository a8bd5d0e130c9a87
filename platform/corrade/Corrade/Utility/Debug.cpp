#include "Corrade/Utility/Debug.h"

#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>

#include "Corrade/Containers/String.h"
#include "Corrade/Utility/DebugStl.h"
#include "Corrade/Utility/DebugStlStringView.h"
#include "Corrade/Utility/Implementation/floatText.h"

namespace Corrade { namespace Utility {

namespace {

struct Outputs {
    std::ostream* debug = &std::cout;
    std::ostream* warning = &std::cerr;
    std::ostream* error = &std::cerr;
};

thread_local Outputs outputs;

class StringBuffer: public std::stringbuf {
public:
    explicit StringBuffer(Containers::String& output): _output(output) {}

private:
    int sync() override {
        const std::string added = str();
        _output = _output + Containers::StringView{added.data(), added.size()};
        str({});
        return 0;
    }

    Containers::String& _output;
};

class StringStream: public std::ostream {
public:
    explicit StringStream(Containers::String& output):
        std::ostream{nullptr}, _buffer{output} {
        rdbuf(&_buffer);
    }

    ~StringStream() { flush(); }

private:
    StringBuffer _buffer;
};

}

std::ostream* Debug::defaultOutput() {
    return &std::cout;
}
std::ostream* Warning::defaultOutput() {
    return &std::cerr;
}
std::ostream* Error::defaultOutput() {
    return &std::cerr;
}

std::ostream* Debug::output() {
    return outputs.debug;
}
std::ostream* Warning::output() {
    return outputs.warning;
}
std::ostream* Error::output() {
    return outputs.error;
}

std::ostream* Debug::stringOutput(Containers::String* const output) {
    return output ? new StringStream{*output} : nullptr;
}

Debug::Debug(std::ostream*& redirected, std::ostream* const output,
    const bool owned, const Flags flags):
    _output{output},
    _redirected{&redirected}, _previous{redirected}, _flags{flags},
    _immediateFlags{Flag::NoSpace}, _owned{owned}, _written{false} {
    redirected = output;
}

Debug::Debug(std::ostream* const output, const Flags flags):
    Debug{outputs.debug, output, false, flags} {}
Debug::Debug(Containers::String* const output, const Flags flags):
    Debug{outputs.debug, stringOutput(output), true, flags} {}

Warning::Warning(std::ostream* const output, const Flags flags):
    Debug{outputs.warning, output, false, flags} {}
Warning::Warning(Containers::String* const output, const Flags flags):
    Debug{outputs.warning, stringOutput(output), true, flags} {}

Error::Error(std::ostream* const output, const Flags flags):
    Debug{outputs.error, output, false, flags} {}
Error::Error(Containers::String* const output, const Flags flags):
    Debug{outputs.error, stringOutput(output), true, flags} {}

Debug::~Debug() {
    if(_output && _written && !(_flags & Flag::NoNewlineAtTheEnd))
        *_output << std::endl;
    *_redirected = _previous;
    if(_owned)
        delete _output;
}

template<class T> Debug& Debug::print(const T& value) {
    if(!_output)
        return *this;

    if(!(immediateFlags() & Flag::NoSpace))
        *_output << ' ';
    *_output << value;
    _immediateFlags = {};
    _written = true;
    return *this;
}

void Debug::newline(Debug& debug) {
    if(debug._output)
        *debug._output << std::endl;
    nospace(debug);
}

Debug& Debug::operator<<(const char* const value) {
    return print(value ? value : "");
}
Debug& Debug::operator<<(const Containers::StringView value) {
    return print(std::string_view{value.data(), value.size()});
}
Debug& Debug::operator<<(const Containers::MutableStringView value) {
    return *this << Containers::StringView{value};
}
Debug& Debug::operator<<(const Containers::String& value) {
    return *this << Containers::StringView{value};
}
Debug& Debug::operator<<(const void* const value) {
    char text[2 + 2 * sizeof(void*)]{'0', 'x'};
    return print(std::string_view(text,
        std::to_chars(text + 2, text + sizeof(text),
            reinterpret_cast<std::uintptr_t>(value), 16)
                .ptr -
            text));
}
Debug& Debug::operator<<(std::nullptr_t) {
    return print("nullptr");
}
Debug& Debug::operator<<(const bool value) {
    return print(value ? "true" : "false");
}
Debug& Debug::operator<<(const int value) {
    return print(value);
}
Debug& Debug::operator<<(const long value) {
    return print(value);
}
Debug& Debug::operator<<(const long long value) {
    return print(value);
}
Debug& Debug::operator<<(const unsigned value) {
    return print(value);
}
Debug& Debug::operator<<(const unsigned long value) {
    return print(value);
}
Debug& Debug::operator<<(const unsigned long long value) {
    return print(value);
}
Debug& Debug::operator<<(const float value) {
    return *this << Implementation::FloatText{value}.view();
}
Debug& Debug::operator<<(const double value) {
    return *this << Implementation::FloatText{value}.view();
}

Debug& operator<<(Debug& debug, const std::string& value) {
    return debug << Containers::StringView{value.data(), value.size()};
}

Debug& operator<<(Debug& debug, const std::string_view value) {
    return debug << Containers::StringView{value.data(), value.size()};
}

}}
