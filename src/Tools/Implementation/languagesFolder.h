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

}}

#endif
