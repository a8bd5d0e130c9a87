#ifndef Orrelin_Tracking_Implementation_StrayTranslations_h
#define Orrelin_Tracking_Implementation_StrayTranslations_h

#include <cstdint>
#include <unordered_set>
#include <Corrade/Utility/Utility.h>

#include "Tracking/TranslationRecord.h"

namespace OrrelinEngine { namespace Tracking {

/* Translations that stand under another key than when the file was last read.
   Somebody may have returned a file from before a component was put in front,
   whose translations are now under the keys of other texts. */
class StrayTranslations {
public:
    explicit StrayTranslations(const TranslationRecord& record,
        Containers::StringView code, const Utility::JsonIterator& texts);

    /* The source that a translation was made for under the key that it has
       been taken from. 0 if it's just a new one. Takes constant time, but
       linear time when it's first taken from another key. */
    std::uint32_t origin(
        Containers::StringView key, Containers::StringView translation);

private:
    void listPresent();

    const TranslationRecord& _record;
    Containers::StringView _code;
    const Utility::JsonIterator& _texts;
    /* Hashes of what the file has, once it's needed */
    std::unordered_set<std::uint64_t> _present;
};

}}

#endif
