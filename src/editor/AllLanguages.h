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

Each language on its own, and with a script, a region or a variant if
translations are known to differ by it or files to be named after it. All names
are distinct and all codes are, even if letter case is ignored.

Rows are sorted by name for an English reader: letter case, accents and
apostrophes don't count, so "Māori" is between "Manx" and "Marathi". A search
for a code has to go through all rows.

The table is constant-initialized, so other static objects can use it. All views
are @relativeref{Corrade,Containers::StringViewFlag::Global} and
@relativeref{Corrade::Containers::StringViewFlag,NullTerminated}, so a
@relativeref{Corrade,Containers::String} can reference them without a copy.
*/
/* Without an export macro, as the library with the table exports all symbols */
extern const Language AllLanguages[AllLanguageCount];

}

#endif
