#ifndef Corrade_Containers_StringStl_h
#define Corrade_Containers_StringStl_h

/** @file
 * @brief Conversion of @ref Corrade::Containers::String and @ref
 *      Corrade::Containers::StringView from and to @ref std::string
 */

#include <string>

#include "Corrade/Containers/String.h"

namespace Corrade { namespace Containers { namespace Implementation {

template<> struct StlStringConverter<std::string> {
    static StringView view(const std::string& string) {
        return {string.data(), string.size(), StringViewFlag::NullTerminated};
    }
};

}}}

#endif
