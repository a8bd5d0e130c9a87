#ifndef Orrelin_Tools_isTranslated_h
#define Orrelin_Tools_isTranslated_h

#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Whether the value at the record path isn't excluded from translation */
bool isTranslated(const OrrelinEditor& editor, Containers::StringView path);

}}

#endif
