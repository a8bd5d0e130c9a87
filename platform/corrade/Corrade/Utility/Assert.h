#ifndef Corrade_Utility_Assert_h
#define Corrade_Utility_Assert_h

/** @file
 * @brief Macro @ref CORRADE_ASSERT(), @ref CORRADE_INTERNAL_ASSERT(), @ref
 *      CORRADE_INTERNAL_ASSERT_EXPRESSION(), @ref
 *      CORRADE_INTERNAL_ASSERT_UNREACHABLE()
 *
 * All of these check for programming errors. A failed one prints a message to
 * the default error output, regardless of any redirection, and aborts.
 */

#include <cstdlib>
#include <utility>

#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/Macros.h"

/** @brief Print a message and abort */
#define CORRADE_ASSERT_MESSAGE_ABORT(...)                                      \
    Corrade::Utility::Error{Corrade::Utility::Error::defaultOutput()}          \
        << __VA_ARGS__;                                                        \
    std::abort();

/**
 * @brief Assert a condition
 *
 * The message is a list of values to print, joined with @cpp << @ce. The
 * function returns with @p returnValue, which may be empty.
 */
#define CORRADE_ASSERT(condition, message, returnValue)                        \
    do {                                                                       \
        if(!(condition)) {                                                     \
            CORRADE_ASSERT_MESSAGE_ABORT(message)                              \
            return returnValue;                                                \
        }                                                                      \
    } while(false)

#define _CORRADE_ASSERT_FAILED(what)                                           \
    "Assertion " what " failed at " __FILE__ ":" CORRADE_LINE_STRING

/** @brief Assert a condition, with the condition itself as the message */
#define CORRADE_INTERNAL_ASSERT(condition)                                     \
    do {                                                                       \
        if(!(condition)) {                                                     \
            CORRADE_ASSERT_MESSAGE_ABORT(_CORRADE_ASSERT_FAILED(#condition))   \
        }                                                                      \
    } while(false)

/** @brief Assert that an expression is truthy and pass its value through */
#define CORRADE_INTERNAL_ASSERT_EXPRESSION(...)                                \
    Corrade::Utility::Implementation::assertExpression(                        \
        __VA_ARGS__, _CORRADE_ASSERT_FAILED(#__VA_ARGS__))

/** @brief Assert that the code is never reached */
#define CORRADE_INTERNAL_ASSERT_UNREACHABLE()                                  \
    do {                                                                       \
        CORRADE_ASSERT_MESSAGE_ABORT(                                          \
            "Reached unreachable code at " __FILE__ ":" CORRADE_LINE_STRING)   \
    } while(false)

namespace Corrade { namespace Utility { namespace Implementation {

template<class T> T assertExpression(T&& value, const char* message) {
    if(!value) {
        CORRADE_ASSERT_MESSAGE_ABORT(message)
    }
    return std::forward<T>(value);
}

}}}

#endif
