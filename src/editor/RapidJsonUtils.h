#ifndef Orrelin_editor_RapidJsonUtils_h
#define Orrelin_editor_RapidJsonUtils_h

/** @file
 * @brief Namespace @ref OrrelinEngine::RapidJsonUtils
 */

#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Helpers for RapidJSON values */
namespace RapidJsonUtils {

/**
@brief Value at a JSON Pointer below any value
@param root     Where to begin; what the empty pointer addresses
@param pointer  The JSON Pointer

@cpp nullptr @ce if there is no such value or @p pointer isn't a valid JSON
Pointer. Searches members one by one.
*/
JsonValue* valueByPointer(JsonValue& root, Containers::StringView pointer);

}

}

#endif
