#ifndef Orrelin_Tools_Implementation_languagesFolder
#define Orrelin_Tools_Implementation_languagesFolder

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* The folder of the project's language files as its settings have it, with the
   project root in front of a relative one. The root itself if it's empty. */
Containers::String languagesFolder(const OrrelinEditor& editor);

/* Whether language files are in an archive instead of being loose */
bool isZipCompressed(const OrrelinEditor& editor);

/* The archive in the languages folder, which is named after the project,
   without its extension. An import appends ".zip" to it. An export drops what
   looks like an extension of the project's name before. */
Containers::String archiveStem(const OrrelinEditor& editor);

}}

#endif
