#ifndef Orrelin_Tools_Implementation_parseLanguageFile
#define Orrelin_Tools_Implementation_parseLanguageFile

#include <Corrade/Containers/Containers.h>
#include <Corrade/Utility/Utility.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* A language file of given content, which is changed where it has escaped
   surrogate pairs. Nothing if it isn't JSON, isn't UTF-8, or has half of such a
   pair in an escape sequence, wherever it is; prints nothing. */
Containers::Optional<Utility::Json> parseLanguageFile(
    Containers::ArrayView<char> content);

/* The object of texts by term key, null if the file has none */
Utility::JsonIterator translationOf(const Utility::Json& file);

}}

#endif
