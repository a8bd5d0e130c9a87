#ifndef Orrelin_shared_Implementation_stringOf
#define Orrelin_shared_Implementation_stringOf

#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* The text of a JSON value, a null view if it has another type. Valid until
   the value changes. */
inline Containers::StringView stringOf(const JsonValue& value) {
    if(!value.IsString())
        return {};
    return {value.GetString(), value.GetStringLength()};
}

}

#endif
