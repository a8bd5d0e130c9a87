#ifndef Corrade_Utility_DebugStl_h
#define Corrade_Utility_DebugStl_h

/** @file
 * @brief Printing of @ref std::string with @ref Corrade::Utility::Debug
 */

#include <string>

#include "Corrade/Utility/Debug.h"

namespace Corrade { namespace Utility {

/** @brief Print a string of the standard library */
Debug& operator<<(Debug& debug, const std::string& value);

}}

#endif
