#ifndef Orrelin_Tracking_Implementation_RecordState_h
#define Orrelin_Tracking_Implementation_RecordState_h

#include <map>
#include <set>
#include <Corrade/Containers/Optional.h>

#include "Tracking/TranslationRecord.h"
#include "Tracking/Implementation/RecordEntries.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Tracking {

struct Sources {
    /* Code of the default language */
    Containers::String code;
    RecordEntries<SourceEntry> entries;
};

typedef RecordEntries<TranslationEntry> Translations;
typedef std::map<Containers::String, Translations, StrLess> LanguageRecords;

/* What a rule finds in a translation. The order is that of the hashes, so that
   what two persons add mostly comes to different lines. */
struct AcceptedEntry {
    std::uint64_t translation;
    std::uint32_t source;
    Containers::String rule;

    bool operator<(const AcceptedEntry& other) const {
        return translation != other.translation
            ? translation < other.translation
            : source != other.source ? source < other.source
                                     : StrLess{}(rule, other.rule);
    }
};

typedef std::map<Containers::String, std::set<AcceptedEntry>, StrLess>
    AcceptedEntries;

struct TranslationRecord::State {
    Containers::String archive;
    Sources sources;
    RecordEntries<SourceEntry> assumedSources;
    LanguageRecords languages;
    std::map<std::uint32_t, Containers::String> formerSources;
    AcceptedEntries accepted;

    /* Described anew, until renew() */
    Containers::Optional<Sources> newSources;
    LanguageRecords newLanguages;
    Translations* begun = nullptr;

    const RecordEntries<SourceEntry>& known() const {
        return sources.entries.isEmpty() ? assumedSources : sources.entries;
    }
};

}}

#endif
