#ifndef Orrelin_editor_Path_h
#define Orrelin_editor_Path_h

/** @file
 * @brief Namespace @ref OrrelinEngine::Path
 */

#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief File system paths, beyond what the utility library offers */
namespace Path {

/** @brief Whether a path is relative; the empty path is */
bool isRelative(Containers::StringView path);

}

}

#endif
