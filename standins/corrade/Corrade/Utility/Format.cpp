#include "Corrade/Utility/Format.h"

#include <cstdio>
#include <string>

namespace Corrade { namespace Utility { namespace Implementation {

namespace {

template<class T>
void append(std::string& out, const char* format, int precision, T value) {
    char text[512];
    const int size =
        std::snprintf(text, sizeof(text), format, precision, value);
    CORRADE_INTERNAL_ASSERT(size > 0 && std::size_t(size) < sizeof(text));
    out.append(text, size);
}

/* The placeholder is without braces */
void append(std::string& out, const Containers::StringView placeholder,
    const FormatArgument& argument) {
    int precision = 0;
    char type = '\0';
    CORRADE_INTERNAL_ASSERT(placeholder.isEmpty() ||
        (std::sscanf(
             std::string{placeholder.data(), placeholder.size()}.c_str(),
             ":.%d%c", &precision, &type) == 2 &&
            type ==
                (argument.type == FormatArgument::Type::Double ? 'f' : 'x')));

    switch(argument.type) {
    case FormatArgument::Type::Double:
        return append(out, "%.*f", precision, argument.number);
    case FormatArgument::Type::String:
        out.append(argument.string.data(), argument.string.size());
        return;
    case FormatArgument::Type::Signed:
    case FormatArgument::Type::Unsigned:
        return append(out,
            type                                                ? "%.*llx"
                : argument.type == FormatArgument::Type::Signed ? "%.*lld"
                                                                : "%.*llu",
            type ? precision : 1, argument.integer);
    }
}

}

Containers::String format(const char* const format,
    const std::initializer_list<FormatArgument> arguments) {
    std::string out;
    const FormatArgument* argument = arguments.begin();
    for(const char* i = format; *i; ++i) {
        if(*i != '{' && *i != '}') {
            out += *i;
            continue;
        }
        if(i[1] == *i) {
            out += *i++;
            continue;
        }
        const char* const end = std::strchr(i, '}');
        CORRADE_INTERNAL_ASSERT(
            *i == '{' && end && argument != arguments.end());
        append(out, {i + 1, std::size_t(end - i - 1)}, *argument++);
        i = end;
    }
    return {out.data(), out.size()};
}

}}}
