#ifndef Orrelin_OrrelinEditorUtils_replaceFile_h
#define Orrelin_OrrelinEditorUtils_replaceFile_h

/** @file
 * @brief Function @ref OrrelinEngine::replaceFile()
 */

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief Put a file in the place of another
@param file     The file, which doesn't need to exist
@param content  What it is to contain

The content is written to a temporary file in the same folder, which has to
reach the disk before it takes the place of the old one: whatever happens, there
is either the old or the new file. It keeps the old one's permissions and, as far
as the user may, its owner and group. Through a symbolic link, what it points to
is replaced; a hard link isn't one to the new file. A file that has the content
already stays untouched.

Returns an empty string, or one line that tells what can't be written and why.
Then there is what was before, without the temporary file. Folders, devices and
files that nobody or not this user may write to are never replaced.
*/
Containers::String replaceFile(
    Containers::StringView file, Containers::StringView content);

}

#endif
