#ifndef Orrelin_Tracking_TranslationTracker_h
#define Orrelin_Tracking_TranslationTracker_h

/** @file
 * @brief Class @ref OrrelinEngine::Tracking::TranslationTracker, struct @ref OrrelinEngine::Tracking::OutdatedTranslation, @ref OrrelinEngine::Tracking::SourceDifference
 */

#include <vector>

#include "Tracking/TranslationRecord.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace Tracking {

/** @brief A text of the default language's file that isn't the project's */
struct SourceDifference {
    /** @brief Index of the term in @ref listTerms() */
    std::size_t term;
    /** @brief Term key */
    Containers::String key;
    /** @brief Record path of the project's text */
    Containers::String path;
    /** @brief Text in the file */
    Containers::String inFile;
    /** @brief Text in the project */
    Containers::String inProject;
    /** @brief Where it was changed */
    SourceState state;
};

/** @brief A translation of another text than the project's */
struct OutdatedTranslation {
    /** @brief Term key */
    Containers::String key;
    /** @brief The translation */
    Containers::String translation;
    /** @brief The project's text */
    Containers::String source;
    /** @brief The text that it was made from, empty if that isn't known */
    Containers::String formerSource;
};

/**
@brief Translations of an open project, and what they were made from

Fills the tables of an editor from the language files and keeps the record
beside them. An editor loads once after it opened a project and gathered its
terms, and saves after each export. Never changes the document.
*/
class ORRELIN_LOCALIZATION_EXPORT TranslationTracker {
public:
    /**
     * @brief Constructor
     *
     * Reads nothing yet. What the editor refers to has to exist for as long as
     * the tracker does.
     */
    explicit TranslationTracker(OrrelinEditor& editor);

    TranslationTracker(const TranslationTracker&) = delete;
    ~TranslationTracker();
    TranslationTracker& operator=(const TranslationTracker&) = delete;

    /**
     * @brief Load the translations of the project's languages
     *
     * Reads the language files and the record beside them where they were last
     * written, also after the project got another name or the zip setting
     * changed. Replaces the translations of each language that has a file, so
     * those that weren't exported are lost, and so are confirmations that
     * weren't saved. The translations of other languages stay. The file of the default language is only compared, see
     * @ref differences(). Translations whose texts have other keys now than in
     * the files go with their texts, see @ref TextMoves.
     *
     * Returns false if a file can't be read or isn't a language file. After
     * that, don't export: it would write nulls over the translations of that
     * file, whose language keeps the table it had. If the record can't be
     * read, nothing is loaded.
     *
     * Prints these faults to @relativeref{Corrade,Utility::Error}. Prints to
     * @relativeref{Corrade,Utility::Warning} which files and how many of
     * their values aren't taken: those of languages and terms that the project
     * doesn't have, and empty texts and the word "None" that nobody is known to
     * have meant. An export drops such values, and from an archive such files.
     *
     * Takes memory for the files and a copy of the project's texts.
     */
    bool load();

    /**
     * @brief Texts of the default language's file that weren't the project's
     *
     * As of the last @ref load(). Unless all are
     * @ref SourceState::ChangedInProject, an export would write over what
     * somebody wrote into the file.
     */
    const std::vector<SourceDifference>& differences() const;

    /**
     * @brief Translations of a language that were made from other texts than
     *      the project's now
     *
     * In the order of their keys, of the terms as last gathered. A translation
     * that is neither in the files nor confirmed counts as made from the text
     * that the default language's file had at last.
     *
     * Linear in the number of terms.
     */
    std::vector<OutdatedTranslation> outdated(
        Containers::StringView code) const;

    /**
     * @brief Take a translation for one of the project's text as it is now
     *
     * For one that somebody wrote in the editor, or looked at and found good.
     * It's on record after the next @ref save(). Holds only for this
     * translation: a later one has to be confirmed again. Returns false if the
     * term or its translation doesn't exist. Linear in the number of terms.
     */
    bool confirm(Containers::StringView code, Containers::StringView key);

    /**
     * @brief Rename a term
     *
     * @ref LocalizationTools::renameTerm(), with which the translations would
     * lose what they were made from.
     */
    void renameTerm(Containers::StringView oldKey,
        Containers::StringView newKey, TermMap& strings);

    /**
     * @brief Write the record of what was exported
     * @param codes     Codes of the exported languages
     *
     * Call it right after @ref LocalizationTools::exportTerms() with the same
     * codes. Pass all languages of the project if texts may have other keys
     * than before: the files of others would keep the old ones.
     *
     * The record is emptied and then written, like the language files. A crash
     * in between, or between export and this call, doesn't change translations.
     * But translations may count as made from the texts that are in the default
     * language's file now.
     *
     * Prints an error and returns false if the record can't be written or
     * @ref load() didn't read it.
     */
    bool save(const Containers::StringIterable& codes);

private:
    class Loader;
    struct State;

    OrrelinEditor& _editor;
    std::unique_ptr<State> _state;
};

}}

#endif
