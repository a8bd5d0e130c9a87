#ifndef Orrelin_Tools_Implementation_languagesFolder
#define Orrelin_Tools_Implementation_languagesFolder

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* The folder of the language files, from the project's settings. A relative one
   is below the project root; an empty one is the root itself. */
Containers::String languagesFolder(const OrrelinEditor& editor);

/* Whether the language files are in an archive, not loose in the folder */
bool isZipCompressed(const OrrelinEditor& editor);

/* Path of the archive without its extension: in the languages folder, named
   after the project. An import appends ".zip". An export first drops the part
   of the project's name that looks like an extension. */
Containers::String archiveStem(const OrrelinEditor& editor);

}}

#endif
