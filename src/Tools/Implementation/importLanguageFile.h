#ifndef Orrelin_Tools_Implementation_importLanguageFile
#define Orrelin_Tools_Implementation_importLanguageFile

#include <Corrade/Containers/Containers.h>
#include <Corrade/Utility/Utility.h>

#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Takes over the terms of one language file, which has the name of its
   language's code. Changes its content as parseLanguageFile() does. Adds the
   language if the project lacks it, and pushes changed texts of the default
   language to the change manager. Prints what is wrong with the file. */
void importLanguageFile(OrrelinEditor& editor, Containers::StringView name,
    Containers::ArrayView<char> content);

/* The same for what translationOf() returned of a file */
void importTranslation(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& translation);

/* Its texts alone, for the terms that are to be translated. Of the default
   language, they are the project's own texts as well. */
void importTexts(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& texts, TranslationMap& translations,
    bool isDefault);

}}

#endif
