#ifndef Orrelin_Tools_Implementation_importLanguageFile
#define Orrelin_Tools_Implementation_importLanguageFile

#include <Corrade/Containers/Containers.h>
#include <Corrade/Utility/Utility.h>

#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Takes over the terms of one language file, whose name is its language's code
   with an extension. Adds the language if the project lacks it, and pushes
   changed texts of the default language to the change manager. Prints faults
   of the file. parseLanguageFile() may change the content. */
void importLanguageFile(OrrelinEditor& editor, Containers::StringView name,
    Containers::ArrayView<char> content);

/* The same for a file that is parsed already. The translation is the object
   that translationOf() found in it. */
void importTranslation(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& translation);

/* Only sets the texts of the terms that are to be translated; neither adds
   a language nor looks at the file's name. With isDefault, also changes the
   project's texts. */
void importTexts(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& texts, TranslationMap& translations,
    bool isDefault);

}}

#endif
