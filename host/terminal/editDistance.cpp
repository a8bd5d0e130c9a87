#include "editDistance.h"

#include <algorithm>
#include <cstdlib>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

namespace OrrelinEngine { namespace Host {

std::size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for(std::size_t j = 0; j != row.size(); ++j)
        row[j] = j;
    for(std::size_t i = 0; i != a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for(std::size_t j = 0; j != b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row[b.size()];
}

Containers::String nameSuggestion(Containers::StringView typed,
    const std::vector<Containers::StringView>& names) {
    const std::string text{typed};
    std::size_t best = 1 + text.size() / 6;
    const Containers::StringView* nearest = nullptr;
    for(const Containers::StringView& name: names) {
        const std::size_t size = name.size();
        /* Nearly all are too long or too short, which is quickly seen */
        if(size > text.size() + best || text.size() > size + best)
            continue;
        const std::size_t distance = editDistance(text, std::string{name});
        if(!distance)
            return {};
        if(distance < best || (!nearest && distance == best)) {
            best = distance;
            nearest = &name;
        }
    }
    return nearest
        ? Containers::String{Utility::format("; did you mean '{}'?", *nearest)}
        : Containers::String{};
}

Containers::String keySuggestion(
    Containers::StringView key, const std::vector<Tracking::Term>& terms) {
    std::vector<Containers::StringView> keys;
    for(const Tracking::Term& term: terms)
        if(term.isTranslated)
            keys.push_back(term.key);
    return nameSuggestion(key, keys);
}

}}
