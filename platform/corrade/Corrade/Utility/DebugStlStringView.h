#ifndef Corrade_Utility_DebugStlStringView_h
#define Corrade_Utility_DebugStlStringView_h

/** @file
 * @brief Printing of @ref std::string_view with @ref Corrade::Utility::Debug
 */

#include <string_view>

#include "Corrade/Utility/Debug.h"

namespace Corrade { namespace Utility {

/** @brief Print a string view of the standard library */
Debug& operator<<(Debug& debug, std::string_view value);

}}

#endif
