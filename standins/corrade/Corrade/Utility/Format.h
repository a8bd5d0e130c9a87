#ifndef Corrade_Utility_Format_h
#define Corrade_Utility_Format_h

/** @file
 * @brief Function @ref Corrade::Utility::format()
 */

#include "Corrade/Containers/String.h"

namespace Corrade { namespace Utility {

namespace Implementation {

/* One argument, stripped of its type */
struct FormatArgument {
    template<class T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
    /*implicit*/ FormatArgument(T value):
        type{std::is_signed_v<T> ? Type::Signed : Type::Unsigned},
        integer{static_cast<unsigned long long>(value)} {}
    /*implicit*/ FormatArgument(double value):
        type{Type::Double}, number{value} {}
    /*implicit*/ FormatArgument(Containers::StringView value):
        type{Type::String}, string{value} {}
    /*implicit*/ FormatArgument(const char* value):
        FormatArgument{Containers::StringView{value}} {}
    /*implicit*/ FormatArgument(const Containers::String& value):
        FormatArgument{Containers::StringView{value}} {}

    enum class Type { Signed, Unsigned, Double, String } type;
    union {
        unsigned long long integer;
        double number;
        Containers::StringView string;
    };
};

Containers::String format(
    const char* format, std::initializer_list<FormatArgument> arguments);

}

/**
@brief Format a string

Each `{}` is replaced by the next argument, `{{` and `}}` by a literal brace.
Integers can be written as `{:.8x}`, with that many hexadecimal digits at least;
floats have to be as `{:.1f}`, with that many decimals. Expects a format of this
kind and as many arguments as it takes.
*/
template<class... Args>
Containers::String format(const char* format, const Args&... args) {
    return Implementation::format(
        format, {Implementation::FormatArgument{args}...});
}

}}

#endif
