#include "Corrade/Utility/Debug.h"

#include <iostream>

#include "Corrade/Containers/String.h"

namespace Corrade { namespace Utility {

std::ostream* Error::defaultOutput() {
    return &std::cerr;
}

Debug::Debug(Implementation::DebugOutput& redirected,
    const Implementation::DebugOutput output, const Flags flags):
    _redirected(redirected),
    _previous{redirected}, _output{output}, _flags{flags} {
    redirected = output;
}

namespace {

thread_local Implementation::DebugOutput debugOutput{&std::cout, nullptr};
thread_local Implementation::DebugOutput warningOutput{&std::cerr, nullptr};
thread_local Implementation::DebugOutput errorOutput{&std::cerr, nullptr};

}

Debug::Debug(const Flags flags): Debug{debugOutput, debugOutput, flags} {}
Debug::Debug(std::ostream* const output, const Flags flags):
    Debug{debugOutput, {output, nullptr}, flags} {}

Warning::Warning(): Debug{warningOutput, warningOutput} {}
Warning::Warning(std::ostream* const output):
    Debug{warningOutput, {output, nullptr}} {}
Warning::Warning(std::nullptr_t): Debug{warningOutput, {nullptr, nullptr}} {}

Error::Error(): Debug{errorOutput, errorOutput} {}
Error::Error(std::ostream* const output):
    Debug{errorOutput, {output, nullptr}} {}
Error::Error(std::nullptr_t): Debug{errorOutput, {nullptr, nullptr}} {}
Error::Error(Containers::String* const output):
    Debug{errorOutput, {nullptr, output}} {}

Debug::~Debug() {
    _redirected = _previous;
    if(!_written)
        return;
    if(!(_flags & Flag::NoNewlineAtTheEnd))
        _line += '\n';
    if(_output.stream)
        *_output.stream << _line << std::flush;
    if(_output.string)
        *_output.string = *_output.string +
            Containers::StringView{_line.data(), _line.size()};
}

Debug& Debug::operator<<(const Containers::StringView value) {
    if(_space)
        _line += ' ';
    _line.append(value.data(), value.size());
    _space = _written = true;
    return *this;
}

Debug& Debug::operator<<(const char* const value) {
    return *this << Containers::StringView{value};
}
Debug& Debug::operator<<(const Containers::String& value) {
    return *this << Containers::StringView{value};
}
Debug& Debug::operator<<(const int value) {
    return *this << Containers::StringView{std::to_string(value).c_str()};
}
Debug& Debug::operator<<(const unsigned value) {
    return *this << static_cast<unsigned long>(value);
}
Debug& Debug::operator<<(const unsigned long value) {
    return *this << Containers::StringView{std::to_string(value).c_str()};
}

}}
