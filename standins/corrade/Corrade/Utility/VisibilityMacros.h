#ifndef Corrade_Utility_VisibilityMacros_h
#define Corrade_Utility_VisibilityMacros_h

/** @file
 * @brief Macro @ref CORRADE_VISIBILITY_EXPORT, @ref CORRADE_VISIBILITY_IMPORT
 */

/** @brief Symbol exported from a shared library */
#define CORRADE_VISIBILITY_EXPORT __attribute__((visibility("default")))

/** @brief Symbol imported from a shared library */
#define CORRADE_VISIBILITY_IMPORT __attribute__((visibility("default")))

#endif
