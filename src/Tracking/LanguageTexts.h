#ifndef Orrelin_Tracking_LanguageTexts_h
#define Orrelin_Tracking_LanguageTexts_h

/** @file
 * @brief Class @ref OrrelinEngine::Tracking::LanguageTexts, struct @ref OrrelinEngine::Tracking::LanguageText, enum @ref OrrelinEngine::Tracking::TextKind
 */

#include <functional>
#include <Corrade/Utility/Utility.h>

#include "Tracking/TextMoves.h"
#include "Tracking/TranslationRecord.h"

namespace OrrelinEngine { namespace Tracking {

/** @brief What a value in a language file is to the project */
enum class TextKind : std::uint8_t {
    /** A text for a term */
    Text,
    /** A null, so the term isn't translated */
    Missing,
    /**
     * An empty text though the source isn't empty. Tools leave it where nothing
     * was translated, so it counts as @ref TextKind::Missing unless the record
     * knows it or empty texts are allowed.
     */
    Empty,
    /** The same for the word "None", which some tools write for a null */
    None,
    /** Of a key that the project has no translated term for */
    Unknown,
    /**
     * Of a key whose term has a text from another key now, and it isn't known
     * where the text that was there has gone
     */
    Displaced,
    /** Neither a text nor null */
    WrongType
};

/** @brief A value in a language file */
struct LanguageText {
    /** @brief Key in the file */
    Containers::StringView key;
    /** @brief The text, a null view if it's none */
    Containers::StringView text;
    /** @brief What it is to the project */
    TextKind kind;
    /**
     * @brief Index of the term that it's for
     *
     * @ref TextMoves::None if it's @ref TextKind::Unknown,
     * @ref TextKind::Displaced or @ref TextKind::WrongType.
     */
    std::size_t term;
    /** @brief Whether the term has another key than the file */
    bool isMoved;
    /** @brief The @ref TranslationRecord::origin() of a translation */
    std::uint32_t origin;
    /** @brief Whether the source of a translation was another text than the project's */
    bool isOutdated;
};

/**
@brief Relates the texts of language files to the terms of a project

Refers to the terms and the record for as long as it exists.
*/
class ORRELIN_LOCALIZATION_EXPORT LanguageTexts {
public:
    /** @brief Constructor, with the terms of @ref listTerms() */
    explicit LanguageTexts(const OrrelinEditor& editor,
        const std::vector<Term>& terms, const TranslationRecord& record);

    /** @brief The terms that were passed */
    const std::vector<Term>& terms() const { return _terms; }

    /** @brief The record that was passed */
    const TranslationRecord& record() const { return _record; }

    /** @brief Texts that have another key now */
    const TextMoves& moves() const { return _moves; }
    /** @overload */
    TextMoves& moves() { return _moves; }

    /**
     * @brief Call a function with each value of a file
     * @param code          Code of the file's language
     * @param texts         Object of texts by term key, from a parsed file
     * @param allowsEmpty   Whether empty texts and the word "None" are texts
     * @param function      Function to call, in the order of the file
     */
    void forEach(Containers::StringView code,
        const Utility::JsonIterator& texts, bool allowsEmpty,
        const std::function<void(const LanguageText&)>& function) const;

private:
    const std::vector<Term>& _terms;
    const TranslationRecord& _record;
    TextMoves _moves;
    Containers::String _defaultLanguage;
};

}}

#endif
