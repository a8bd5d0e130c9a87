#ifndef Orrelin_Tracking_Implementation_RecordState_h
#define Orrelin_Tracking_Implementation_RecordState_h

#include <map>
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

struct TranslationRecord::State {
    Containers::String archive;
    Sources sources;
    RecordEntries<SourceEntry> assumedSources;
    LanguageRecords languages;
    std::map<std::uint32_t, Containers::String> formerSources;

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
