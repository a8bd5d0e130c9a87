#ifndef Orrelin_shared_LocalizationData_h
#define Orrelin_shared_LocalizationData_h

/** @file
 * @brief Struct @ref OrrelinEngine::LocalizationData and the tables of terms and translations
 */

#include <map>
#include <unordered_map>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine {

/**
@brief Term keys of all translatable values, by record path

Where several values share one term key, each is here.
*/
typedef std::unordered_map<Containers::String, Containers::String, StrHash,
    StrEq>
    TermMap;

/**
@brief Record paths of all terms, in the order of their keys

Where several values share one term key, the first that claimed it is here.
*/
typedef std::map<Containers::String, Containers::String, StrLess> TermPathMap;

/**
@brief Translations of one language, by term key

A term with a value reads so in that language, the empty text included. A term
with an empty @relativeref{Corrade,Containers::Optional} has no translation.
*/
typedef std::map<Containers::String, Containers::Optional<Containers::String>,
    StrLess>
    TranslationMap;

/** @brief Translations of all languages, by language code */
typedef std::unordered_map<Containers::String, TranslationMap, StrHash, StrEq>
    LanguageTranslations;

/**
@brief Localization state of an open project

Owned by the editor, which reaches it to the tools through
@ref OrrelinEditor::localization.
*/
struct LocalizationData {
    /** @brief All terms, as last gathered and as renamed since */
    TermPathMap terms;

    /** @brief The translations of each language */
    LanguageTranslations translations;
};

}

#endif
