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

Prints the value as JSON on one line without spaces. Cuts a long value after
1000 bytes, never in the middle of a character, and marks that with "...".
*/
Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const OrrelinEngine::JsonValue& value);

}

#endif
