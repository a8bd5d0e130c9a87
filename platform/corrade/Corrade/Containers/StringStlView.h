#ifndef Corrade_Containers_StringStlView_h
#define Corrade_Containers_StringStlView_h

/** @file
 * @brief Conversion of @ref Corrade::Containers::String and @ref
 *      Corrade::Containers::StringView from and to @ref std::string_view
 */

#include <string_view>

#include "Corrade/Containers/String.h"

namespace Corrade { namespace Containers { namespace Implementation {

template<> struct StlStringConverter<std::string_view> {
    static StringView view(std::string_view string) {
        return {string.data(), string.size()};
    }
};

}}}

#endif
