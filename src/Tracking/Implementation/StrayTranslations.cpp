#include "Tracking/Implementation/StrayTranslations.h"

#include <Corrade/Utility/Json.h>

#include "Tracking/Implementation/RecordState.h"
#include "Tracking/Implementation/hashes.h"

namespace OrrelinEngine { namespace Tracking {

StrayTranslations::StrayTranslations(const TranslationRecord& record,
    Containers::StringView code, const Utility::JsonIterator& texts):
    _record(record),
    _code{code}, _texts(texts) {}

std::uint32_t StrayTranslations::origin(
    Containers::StringView key, Containers::StringView translation) {
    const auto language = _record._state->languages.find(_code);
    if(language == _record._state->languages.end())
        return 0;
    const std::uint64_t own = translationHash(key, translation);
    const std::uint64_t first = own & ~std::uint64_t{KeyMask};
    for(const TranslationEntry& entry:
        language->second.range(first, first | KeyMask)) {
        if(!entry.source() || entry.id() == own)
            continue;
        listPresent();
        if(!_present.count(entry.id()))
            return entry.source();
    }
    return 0;
}

void StrayTranslations::listPresent() {
    if(!_present.empty())
        return;
    for(const Utility::JsonObjectItem item: _texts->asObject())
        if(item.value().type() == Utility::JsonToken::Type::String)
            _present.insert(
                translationHash(item.key(), item.value().asString()));
}

}}
