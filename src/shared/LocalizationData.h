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

If several values share one term key, each of them is listed.
*/
typedef std::unordered_map<Containers::String, Containers::String, StrHash,
    StrEq>
    TermMap;

/**
@brief Record paths of all terms, in the order of their keys

If several values share one term key, the first that got it is listed.
*/
typedef std::map<Containers::String, Containers::String, StrLess> TermPathMap;

/**
@brief Translations of one language, by term key

A text is the translation, even if it's empty. A term with an empty
@relativeref{Corrade,Containers::Optional}, like one that isn't listed, has no
translation.
*/
typedef std::map<Containers::String, Containers::Optional<Containers::String>,
    StrLess>
    TranslationMap;

/** @brief Translations of all languages, by language code */
typedef std::unordered_map<Containers::String, TranslationMap, StrHash, StrEq>
    LanguageTranslations;

/**
@brief Localization state of an open project

The editor owns it. Tools reach it through @ref OrrelinEditor::localization.
*/
struct LocalizationData {
    /** @brief All terms, as last gathered and as renamed since */
    TermPathMap terms;

    /** @brief The translations of each language */
    LanguageTranslations translations;
};

}

#endif
