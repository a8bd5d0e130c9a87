#ifndef Corrade_Utility_Format_h
#define Corrade_Utility_Format_h

/** @file
 * @brief Function @ref Corrade::Utility::format(), @ref
 *      Corrade::Utility::formatInto(), @ref Corrade::Utility::print(), @ref
 *      Corrade::Utility::printError()
 */

#include <cstdio>

#include "Corrade/Containers/String.h"

namespace Corrade { namespace Utility {

namespace Implementation {

/* One argument, stripped of its type */
class FormatArgument {
public:
    template<class T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
    /*implicit*/ FormatArgument(T value):
        _type{std::is_signed_v<T> ? Type::Signed : Type::Unsigned},
        _size{sizeof(T)}, _integer{static_cast<unsigned long long>(value)} {}
    template<class T, std::enable_if_t<std::is_enum_v<T>, int> = 0>
    /*implicit*/ FormatArgument(T value):
        FormatArgument{std::underlying_type_t<T>(value)} {}
    /*implicit*/ FormatArgument(float value):
        _type{Type::Float}, _size{}, _float{value} {}
    /*implicit*/ FormatArgument(double value):
        _type{Type::Double}, _size{}, _float{value} {}
    /*implicit*/ FormatArgument(Containers::StringView value):
        _type{Type::String}, _size{}, _string{value} {}
    /*implicit*/ FormatArgument(Containers::MutableStringView value):
        FormatArgument{Containers::StringView{value}} {}
    /*implicit*/ FormatArgument(const char* value):
        FormatArgument{Containers::StringView{value}} {}
    /*implicit*/ FormatArgument(const Containers::String& value):
        FormatArgument{Containers::StringView{value}} {}

private:
    friend class FormatOutput;

    enum class Type { Signed, Unsigned, Float, Double, String } _type;
    std::size_t _size;
    union {
        unsigned long long _integer;
        double _float;
        Containers::StringView _string;
    };
};

Containers::String format(
    const char* format, Containers::ArrayView<const FormatArgument> arguments);
std::size_t formatInto(Containers::MutableStringView buffer, const char* format,
    Containers::ArrayView<const FormatArgument> arguments);
void formatInto(std::FILE* file, const char* format,
    Containers::ArrayView<const FormatArgument> arguments);

/* An array can't be empty, so there's always one more than is used */
template<class... Args> struct FormatArguments {
    explicit FormatArguments(const Args&... args): arguments{args..., 0} {}
    operator Containers::ArrayView<const FormatArgument>() const {
        return {arguments, sizeof...(Args)};
    }

    FormatArgument arguments[sizeof...(Args) + 1];
};

}

/**
@brief Format a string

Placeholders are `{}` for the next argument and `{n}` for the n-th, counted from
zero; a `{{` and `}}` is a literal brace. A placeholder with no argument stays
as it is. After a `:` there can be a precision, such as `{:.3}`, and a type. The
precision is the minimal digit count of integers, the significant digit count
of floats (or the count of decimals with the type `f` and `e`) and the maximal
size of strings. The type is one of `d`, `o`, `x` and `X` for integers and `g`,
`e` and `f` for floats. Expects that the format is valid.
*/
template<class... Args>
Containers::String format(const char* format, const Args&... args) {
    return Implementation::format(
        format, Implementation::FormatArguments<Args...>{args...});
}

/**
@brief Format into a buffer

Returns the size written, or what'd be needed if the buffer is null. Expects
that it fits. No null terminator is written.
*/
template<class... Args>
std::size_t formatInto(const Containers::MutableStringView& buffer,
    const char* format, const Args&... args) {
    return Implementation::formatInto(
        buffer, format, Implementation::FormatArguments<Args...>{args...});
}

/** @overload */
template<class... Args, std::size_t size> std::size_t formatInto(
    char (&buffer)[size], const char* format, const Args&... args) {
    return formatInto(
        Containers::MutableStringView{buffer, size}, format, args...);
}

/** @brief Format into a file */
template<class... Args>
void formatInto(std::FILE* file, const char* format, const Args&... args) {
    Implementation::formatInto(
        file, format, Implementation::FormatArguments<Args...>{args...});
}

/** @brief Print formatted text to the standard output, without a newline */
template<class... Args> void print(const char* format, const Args&... args) {
    formatInto(stdout, format, args...);
}

/**
 * @brief Print formatted text to the standard error output, without a newline
 */
template<class... Args>
void printError(const char* format, const Args&... args) {
    formatInto(stderr, format, args...);
}

}}

#endif
