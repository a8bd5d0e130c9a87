#ifndef Orrelin_Tracking_Term_h
#define Orrelin_Tracking_Term_h

/** @file
 * @brief Struct @ref OrrelinEngine::Tracking::Term, function @ref OrrelinEngine::Tracking::listTerms()
 */

#include <vector>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"
#include "shared/Export.h"

namespace OrrelinEngine {

/** @brief What translations were made from, and who changed a text */
namespace Tracking {

/**
@brief A term with its source text

The views are of the tables and the document, and valid until those change.
*/
struct Term {
    /** @brief Term key */
    Containers::StringView key;
    /** @brief Record path of the value */
    Containers::StringView path;
    /** @brief The project's text, a null view if it has none */
    Containers::StringView source;
    /** @brief Whether the project wants it translated */
    bool isTranslated;
};

/**
@brief The terms as last gathered, in the order of their keys

Those that aren't to be translated are listed, too.
*/
ORRELIN_LOCALIZATION_EXPORT std::vector<Term> listTerms(
    const OrrelinEditor& editor);

/** @brief Whether the key of a term is made from its place, not chosen by somebody */
ORRELIN_LOCALIZATION_EXPORT bool isGenerated(
    const OrrelinEditor& editor, const Term& term);

}
}

#endif
