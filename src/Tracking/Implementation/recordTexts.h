#ifndef Orrelin_Tracking_Implementation_recordTexts_h
#define Orrelin_Tracking_Implementation_recordTexts_h

#include <functional>
#include <vector>

#include "Tracking/LanguageTexts.h"
#include "Tracking/TranslationTracker.h"

namespace OrrelinEngine { namespace Tracking {

/* Adds the difference of a text in the default language's file, if there is
   one. Returns false if the project has no place for the text. */
bool addDifference(const LanguageTexts& texts, const LanguageText& text,
    std::vector<SourceDifference>& out);

/* Describes a file in the record as it is, after the record's beginSources() or
   beginTranslations(). */
void recordAsRead(TranslationRecord& record, Containers::StringView code,
    bool isDefault, const LanguageText& text);

/* The origin of a term's translation in the tables */
typedef std::function<std::uint32_t(const Term&, Containers::StringView)>
    OriginFunction;

/* Describes the file of a language in the record, as an export writes it */
void recordExport(TranslationRecord& record, const OrrelinEditor& editor,
    Containers::StringView code, const std::vector<Term>& terms,
    const OriginFunction& originOf);

/* Calls the function with the terms to be translated that have a translation in
   the table, and with a null view for those that don't */
void forEachTranslation(const std::vector<Term>& terms,
    const TranslationMap& translations,
    const std::function<void(const Term&, Containers::StringView)>& function);

}}

#endif
