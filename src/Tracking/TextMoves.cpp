#include "Tracking/TextMoves.h"

#include <algorithm>

#include "Tracking/TranslationRecord.h"
#include "Tracking/Implementation/RecordState.h"
#include "Tracking/Implementation/hashes.h"

namespace OrrelinEngine { namespace Tracking {

namespace {

/* Where a text was in the file, and where it's now */
struct Places {
    std::uint64_t key = 0;
    std::size_t term = 0;
    int keyCount = 0;
    int termCount = 0;
};

}

/* Texts that are where they were take no part. The others are brought together
   by the hashes of their texts. */
TextMoves::TextMoves(const OrrelinEditor& editor,
    const std::vector<Term>& terms, const TranslationRecord& record) {
    const RecordEntries<SourceEntry>& sources = record._state->known();
    if(sources.isEmpty())
        return;

    std::unordered_map<std::uint64_t, Places> places;
    std::unordered_set<std::uint64_t> chosen;
    const std::uint64_t emptyText = textHash({});
    std::unordered_set<std::uint64_t> changedKeys;
    for(std::size_t i = 0; i != terms.size(); ++i) {
        const Term& term = terms[i];
        const std::uint64_t key = textHash(term.key);
        const std::uint64_t text = textHash(term.source);
        if(!term.isTranslated || sources.contains({key, text}))
            continue;
        if(sources.find(key)) {
            changedKeys.insert(key);
            if(!isGenerated(editor, term))
                chosen.insert(key);
        }
        if(text == emptyText)
            continue;
        Places& place = places[text];
        place.term = i;
        ++place.termCount;
    }
    if(places.empty())
        return;

    /* A text that others are the same as doesn't tell which one it is */
    for(const Term& term: terms) {
        const auto place = places.find(textHash(term.source));
        if(term.isTranslated && place != places.end() &&
            sources.contains({textHash(term.key), place->first}))
            ++place->second.termCount;
    }

    /* Keys of the file that the project doesn't have anymore changed, too */
    std::vector<std::uint64_t> keys;
    keys.reserve(terms.size());
    for(const Term& term: terms)
        if(term.isTranslated)
            keys.push_back(textHash(term.key));
    std::sort(keys.begin(), keys.end());
    for(const SourceEntry& entry: sources) {
        const auto place = places.find(entry.text);
        if(place == places.end())
            continue;
        ++place->second.keyCount;
        if(!chosen.count(entry.key) &&
            (changedKeys.count(entry.key) ||
                !std::binary_search(keys.begin(), keys.end(), entry.key)))
            place->second.key = entry.key;
    }

    for(const auto& place: places)
        if(place.second.key && place.second.keyCount == 1 &&
            place.second.termCount == 1) {
            _terms.emplace(place.second.key, place.second.term);
            _targets.insert(place.second.term);
        }
}

void TextMoves::keep(Containers::StringView key, std::size_t term) {
    const auto source = _terms.find(textHash(key));
    if(source != _terms.end()) {
        _targets.erase(source->second);
        _terms.erase(source);
    }
    if(!_targets.erase(term))
        return;
    for(auto move = _terms.begin(); move != _terms.end(); ++move)
        if(move->second == term) {
            _terms.erase(move);
            return;
        }
}

std::size_t TextMoves::target(Containers::StringView key) const {
    if(_terms.empty())
        return None;
    const auto found = _terms.find(textHash(key));
    return found == _terms.end() ? None : found->second;
}

}}
