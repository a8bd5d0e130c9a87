#ifndef Orrelin_Tools_Implementation_parseLanguageFile
#define Orrelin_Tools_Implementation_parseLanguageFile

#include <Corrade/Containers/Containers.h>
#include <Corrade/Utility/Utility.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Parses the content of a language file. Replaces escaped surrogate pairs in it
   by the characters they mean. Returns nothing if it isn't JSON, isn't UTF-8 or
   has half of such a pair anywhere. Prints nothing. */
Containers::Optional<Utility::Json> parseLanguageFile(
    Containers::ArrayView<char> content);

/* The object of texts by term key, null if the file has none */
Utility::JsonIterator translationOf(const Utility::Json& file);

}}

#endif
