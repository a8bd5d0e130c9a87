#ifndef Corrade_Utility_Assert_h
#define Corrade_Utility_Assert_h

/** @file
 * @brief Macro @ref CORRADE_ASSERT(), @ref CORRADE_INTERNAL_ASSERT()
 *
 * Both check for programming errors. A failed one prints a message to the
 * default error output, regardless of any redirection, and aborts.
 */

#include <cstdlib>
#include <utility>

#include "Corrade/Utility/Debug.h"

/**
 * @brief Assert a condition
 *
 * The message is a list of values to print, joined with @cpp << @ce. The
 * function returns with @p returnValue, which may be empty.
 */
#define CORRADE_ASSERT(condition, message, returnValue)                        \
    do {                                                                       \
        if(!(condition)) {                                                     \
            Corrade::Utility::Error{Corrade::Utility::Error::defaultOutput()}  \
                << message;                                                    \
            std::abort();                                                      \
            return returnValue;                                                \
        }                                                                      \
    } while(false)

/** @brief Assert a condition, with the condition itself as the message */
#define CORRADE_INTERNAL_ASSERT(condition)                                     \
    do {                                                                       \
        if(!(condition)) {                                                     \
            Corrade::Utility::Error{Corrade::Utility::Error::defaultOutput()}  \
                << "Assertion " #condition " failed at " __FILE__ ":"          \
                << Corrade::Utility::Debug::nospace << __LINE__;               \
            std::abort();                                                      \
        }                                                                      \
    } while(false)

#endif
