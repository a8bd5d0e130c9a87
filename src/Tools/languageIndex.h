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

The first row that has the code, @ref AllLanguageCount if there is none. Goes
through the rows from the first one on.
*/
inline unsigned short languageIndex(Corrade::Containers::StringView code) {
    unsigned short row = 0;
    while(row != AllLanguageCount && AllLanguages[row].code != code)
        ++row;
    return row;
}

}

#endif
