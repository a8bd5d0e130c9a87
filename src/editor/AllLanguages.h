#ifndef Orrelin_editor_AllLanguages_h
#define Orrelin_editor_AllLanguages_h

/** @file
 * @brief Struct @ref OrrelinEngine::Language, table
 *      @ref OrrelinEngine::AllLanguages
 */

#include <Corrade/Containers/StringView.h>

namespace OrrelinEngine {

/**
@brief One row of the language table

@see @ref AllLanguages
*/
struct Language {
    /** @brief Display name in English, such as `German (Germany)` */
    Corrade::Containers::StringView name;

    /** @brief BCP 47 code, such as `de-DE` */
    Corrade::Containers::StringView code;
};

/** @brief Count of rows in @ref AllLanguages */
constexpr unsigned short AllLanguageCount = 411;

/**
@brief All languages that a project can be translated to

Languages on their own and together with a script, a region or a variant where
translations are known to differ or files to be named so. Names and codes are
each distinct, also if letter case is ignored.

Rows are sorted by name the way an English reader looks it up: letter case,
accents and apostrophes don't count, so "Māori" is between "Manx" and "Marathi".
Searching for a code thus has to go through all rows.

The table is constant-initialized and usable by other static objects. All views
are @relativeref{Corrade,Containers::StringViewFlag::Global} and
@relativeref{Corrade::Containers::StringViewFlag,NullTerminated}, so a
@relativeref{Corrade,Containers::String} can reference them without a copy.
*/
/* No export macro, the library that has the table shows all its symbols */
extern const Language AllLanguages[AllLanguageCount];

}

#endif
