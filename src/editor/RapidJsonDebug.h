#ifndef Orrelin_editor_RapidJsonDebug_h
#define Orrelin_editor_RapidJsonDebug_h

/** @file
 * @brief Debug output of JSON values
 */

#include <Corrade/Utility/Utility.h>

#include "OrrelinEngine.h"

namespace rapidjson {

/**
@brief Debug output of a JSON value

The value as JSON on one line without spaces. A long value is cut after 1000
bytes, marked with "...".
*/
Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const OrrelinEngine::JsonValue& value);

}

#endif
