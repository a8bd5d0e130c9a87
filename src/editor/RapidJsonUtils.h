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
@param root     Value at which the pointer begins
@param pointer  The JSON Pointer; the empty one leads to @p root itself

Returns @cpp nullptr @ce if there is no such value or if @p pointer isn't
a valid JSON Pointer. Searches the members of each object on the way one by one.
*/
JsonValue* valueByPointer(JsonValue& root, Containers::StringView pointer);

}

}

#endif
