#ifndef Orrelin_Tracking_TextMoves_h
#define Orrelin_Tracking_TextMoves_h

/** @file
 * @brief Class @ref OrrelinEngine::Tracking::TextMoves
 */

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "Tracking/Term.h"

namespace OrrelinEngine { namespace Tracking {

class TranslationRecord;

/**
@brief Texts that have another key now than when the files were written

A component that is put in front of others, or taken away, changes the generated
keys of those behind it, so that the files have their translations under the
keys of other texts. This finds the key that such a text has now:

-   The default language's file had it under a key that isn't in the project
    anymore, or that has another text there and wasn't chosen by somebody.
-   The project and the file have it just once. Of texts that are the same, it
    isn't known which one went where.

Texts for which that isn't so stay at their keys.
*/
class ORRELIN_LOCALIZATION_EXPORT TextMoves {
public:
    /** @brief No term */
    static constexpr std::size_t None = ~std::size_t{};

    /**
     * @brief Compare the project with a record of its files
     *
     * Takes linear time in the number of terms, and some more for those whose
     * texts aren't at their keys. Keeps no reference.
     */
    explicit TextMoves(const OrrelinEditor& editor,
        const std::vector<Term>& terms, const TranslationRecord& record);

    /** @brief How many texts have another key now */
    std::size_t count() const { return _targets.size(); }

    /**
     * @brief Index of the term that has the text of a key in the file
     *
     * @ref None if it isn't known to have another key now.
     */
    std::size_t target(Containers::StringView key) const;

    /** @brief Whether another key's text is at a term now */
    bool isTarget(std::size_t term) const { return _targets.count(term); }

    /**
     * @brief Let the text of a term stay where it is
     *
     * For a file that has it there already, though the record doesn't know.
     */
    void keep(Containers::StringView key, std::size_t term);

private:
    /* Terms by the hash of the text's key in the file */
    std::unordered_map<std::uint64_t, std::size_t> _terms;
    std::unordered_set<std::size_t> _targets;
};

}}

#endif
