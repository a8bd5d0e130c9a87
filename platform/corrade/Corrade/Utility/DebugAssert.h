#ifndef Corrade_Utility_DebugAssert_h
#define Corrade_Utility_DebugAssert_h

/** @file
 * @brief Macro @ref CORRADE_DEBUG_ASSERT(), @ref
 *      CORRADE_INTERNAL_DEBUG_ASSERT()
 *
 * Checks that are in debug builds only.
 */

#include "Corrade/Utility/Assert.h"

#ifndef NDEBUG
/** @brief @ref CORRADE_ASSERT() in a debug build, nothing otherwise */
#define CORRADE_DEBUG_ASSERT(condition, message, returnValue)                  \
    CORRADE_ASSERT(condition, message, returnValue)

/** @brief @ref CORRADE_INTERNAL_ASSERT() in a debug build, nothing otherwise */
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition)                               \
    CORRADE_INTERNAL_ASSERT(condition)
#else
#define CORRADE_DEBUG_ASSERT(condition, message, returnValue)                  \
    do {                                                                       \
    } while(false)
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition)                               \
    do {                                                                       \
    } while(false)
#endif

#endif
