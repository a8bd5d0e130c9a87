#ifndef Orrelin_Tracking_TranslationRecord_h
#define Orrelin_Tracking_TranslationRecord_h

/** @file
 * @brief Class @ref OrrelinEngine::Tracking::TranslationRecord, enum @ref OrrelinEngine::Tracking::SourceState
 */

#include <cstdint>
#include <memory>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"
#include "shared/Export.h"

namespace OrrelinEngine { namespace Tracking {

/** @brief Where a source text was changed since the default language's file was last written or read */
enum class SourceState : std::uint8_t {
    /** The file has the project's text */
    Same,
    /** Only in the project, so the file is out of date */
    ChangedInProject,
    /** Only in the file, so the project should take the text */
    ChangedInFile,
    /**
     * In both, or it isn't known where. A person has to decide, as either text
     * may be somebody's work.
     */
    Conflict
};

/**
@brief What translations were made from

Language files don't tell from which source text a translation was made. This
record does, and lies beside them as a text file. It describes the files as they
were when last written or read:

-   of each text in the default language's file, a hash;
-   of each translation, a hash of it with its key, and one of the source text
    that it was made from;
-   source texts that were replaced since their translations were made;
-   which findings of checks somebody accepted.

There's one line for each text, in the order of the language file. So version
control can merge the record where it can merge the language files. Of a
conflict, both sides may stay, even with the marks around them: what fits no
text of the files is dropped when the record is next written.

Hashes of keys and source texts have 36 bits. Of a translation, there are 24 of
the text and 12 of its key. That two different texts are taken for the same is less likely than
one in ten million.
*/
class ORRELIN_LOCALIZATION_EXPORT TranslationRecord {
public:
    /** @brief Name of the record's file in the folder of the language files */
    static const char FileName[];

    /** @brief An empty record */
    explicit TranslationRecord();

    /** @brief Not copyable */
    TranslationRecord(const TranslationRecord&) = delete;

    /** @brief Move constructor */
    TranslationRecord(TranslationRecord&&) noexcept;

    ~TranslationRecord();

    /** @brief Not copyable */
    TranslationRecord& operator=(const TranslationRecord&) = delete;

    /** @brief Move assignment */
    TranslationRecord& operator=(TranslationRecord&&) noexcept;

    /**
     * @brief Read the content of a record's file
     *
     * Replaces all that the record knew. If the content isn't a record, or one
     * of a later version, leaves the record empty and returns false. Passes
     * over lines that aren't understood. Prints nothing.
     */
    bool parse(Containers::StringView content);

    /**
     * @brief The content for a record's file
     *
     * The same for the same texts. Leaves out former sources from which there's
     * no translation anymore.
     */
    Containers::String write() const;

    /**
     * @brief Forget the source texts if they are in another language
     *
     * For a project whose default language may have changed since.
     */
    void expectSources(Containers::StringView code);

    /** @brief Whether nothing is known */
    bool isEmpty() const;

    /**
     * @brief Name of the archive with the language files
     *
     * Empty if they are loose. Valid until the record changes.
     */
    Containers::StringView archive() const;

    /** @brief Set the name of the archive with the language files */
    void setArchive(Containers::StringView name);

    /**
     * @brief Compare a text of the default language's file with the project's
     *
     * A text that was the project's before, as far as it's known by
     * @ref formerSource(), is in conflict with any other. An old file may have
     * come back, or somebody means it.
     *
     * Takes constant time if texts are asked for in the order of the file,
     * logarithmic time otherwise. So do the other operations.
     */
    SourceState compare(Containers::StringView key, Containers::StringView file,
        Containers::StringView project) const;

    /** @brief Whether the default language's file had a text under a key */
    bool hasSource(Containers::StringView key) const;

    /**
     * @brief Assume that translations were made from a text
     *
     * For a record without source texts, with the texts that the default
     * language's file has now. That doesn't make them known for
     * @ref compare().
     */
    void assumeSource(Containers::StringView key, Containers::StringView text);

    /** @brief Whether there are source texts to compare with */
    bool hasSources() const;

    /**
     * @brief Hash of the source text that a translation was made from
     * @param code          Language code
     * @param key           Term key, as in the file
     * @param translation   The translation
     * @param source        The project's text
     *
     * A translation that isn't known was made from the text that stood in the
     * default language's file, or if that isn't known either, from @p source.
     */
    std::uint32_t origin(Containers::StringView code,
        Containers::StringView key, Containers::StringView translation,
        Containers::StringView source) const;

    /**
     * @brief What @ref origin() gives for a known translation
     *
     * 0 if it isn't known.
     */
    std::uint32_t knownOrigin(Containers::StringView code,
        Containers::StringView key, Containers::StringView translation,
        Containers::StringView source) const;

    /** @brief What @ref origin() gives for a translation that isn't known */
    std::uint32_t originOfNew(
        Containers::StringView key, Containers::StringView source) const;

    /** @brief Whether a translation is known */
    bool hasTranslation(Containers::StringView code, Containers::StringView key,
        Containers::StringView translation) const;

    /** @brief What @ref origin() gives for a translation that was made from a text */
    static std::uint32_t originOf(Containers::StringView source);

    /**
     * @brief A source text by the hash that @ref origin() gave
     *
     * Empty if it isn't known. Valid until the record changes.
     */
    Containers::StringView formerSource(std::uint32_t origin) const;

    /** @brief Remember a source text for @ref formerSource() */
    void addFormerSource(Containers::StringView text);

    /**
     * @brief Begin to describe the default language's file anew
     *
     * The texts are then to be added with @ref addSource(), in their order.
     * Until @ref renew(), this only changes what @ref write() gives.
     */
    void beginSources(Containers::StringView code);

    /** @brief Add a text of the default language's file */
    void addSource(Containers::StringView key, Containers::StringView text);

    /** @brief Add the text that is known for a key, if there's one */
    void keepSource(Containers::StringView key);

    /** @brief Keep the known texts instead of those since @ref beginSources() */
    void keepSources();

    /**
     * @brief Begin to describe the file of another language anew
     *
     * The translations are then to be added with @ref addTranslation() or
     * @ref addMissing(), in their order. Until @ref renew(), this only changes
     * what @ref write() gives.
     */
    void beginTranslations(Containers::StringView code);

    /** @brief Add a translation to the language begun last, with its @ref origin() */
    void addTranslation(Containers::StringView key,
        Containers::StringView translation, std::uint32_t origin);

    /** @brief Add a term without a translation to the language begun last */
    void addMissing(Containers::StringView key);

    /** @brief Let the new descriptions hold for all other operations, too */
    void renew();

    /**
     * @brief Whether somebody accepted what a rule finds in a translation
     * @param code          Language code
     * @param rule          Name of the rule
     * @param source        The source text
     * @param translation   The translation
     *
     * That holds for these two texts under any key. Takes logarithmic time.
     */
    bool isAccepted(Containers::StringView code, Containers::StringView rule,
        Containers::StringView source,
        Containers::StringView translation) const;

    /**
     * @brief Accept what a rule finds in a translation
     *
     * The name of the rule has to consist of small letters and hyphens.
     */
    void accept(Containers::StringView code, Containers::StringView rule,
        Containers::StringView source, Containers::StringView translation);

    /** @brief Take back that something was accepted */
    void withdraw(Containers::StringView code, Containers::StringView rule,
        Containers::StringView source, Containers::StringView translation);

    /** @brief Forget a language */
    void remove(Containers::StringView code);

private:
    friend class StrayTranslations;
    friend class TextMoves;
    struct State;

    std::unique_ptr<State> _state;
};

}}

#endif
