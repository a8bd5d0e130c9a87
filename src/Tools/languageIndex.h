#ifndef Orrelin_Tools_languageIndex_h
#define Orrelin_Tools_languageIndex_h

/** @file
 * @brief Function @ref OrrelinEngine::languageIndex()
 */

#include "editor/AllLanguages.h"

namespace OrrelinEngine {

/**
@brief Row of a language code in @ref AllLanguages
@param code     The code, compared byte for byte

Returns the first row with the code, or @ref AllLanguageCount if no row has it.
Linear in the number of rows.
*/
inline unsigned short languageIndex(Corrade::Containers::StringView code) {
    unsigned short row = 0;
    while(row != AllLanguageCount && AllLanguages[row].code != code)
        ++row;
    return row;
}

}

#endif
