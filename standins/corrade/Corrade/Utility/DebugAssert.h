#ifndef Corrade_Utility_DebugAssert_h
#define Corrade_Utility_DebugAssert_h

/** @file
 * @brief Macro @ref CORRADE_INTERNAL_DEBUG_ASSERT()
 */

#include "Corrade/Utility/Assert.h"

/** @brief @ref CORRADE_INTERNAL_ASSERT() in a debug build, nothing otherwise */
#ifndef NDEBUG
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition)                               \
    CORRADE_INTERNAL_ASSERT(condition)
#else
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition)                               \
    do {                                                                       \
    } while(false)
#endif

#endif
