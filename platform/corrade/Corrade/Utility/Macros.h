#ifndef Corrade_Utility_Macros_h
#define Corrade_Utility_Macros_h

/** @file
 * @brief Macro @ref CORRADE_LINE_STRING
 */

#define _CORRADE_STRINGIFY_INTERNAL(value) #value
#define _CORRADE_STRINGIFY(value) _CORRADE_STRINGIFY_INTERNAL(value)

/** @brief Current line as a string literal */
#define CORRADE_LINE_STRING _CORRADE_STRINGIFY(__LINE__)

#endif
