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

Containers::String keySuggestion(
    Containers::StringView key, const std::vector<Tracking::Term>& terms) {
    const std::string typed{key};
    std::size_t best = 1 + typed.size() / 6;
    const Tracking::Term* nearest = nullptr;
    for(const Tracking::Term& term: terms) {
        const std::size_t size = term.key.size();
        /* Nearly all are too long or too short, which is quickly seen */
        if(!term.isTranslated || size > typed.size() + best ||
            typed.size() > size + best)
            continue;
        const std::size_t distance = editDistance(typed, std::string{term.key});
        if(!distance)
            return {};
        if(distance < best || (!nearest && distance == best)) {
            best = distance;
            nearest = &term;
        }
    }
    return nearest ? Containers::String{Utility::format(
                         "; did you mean '{}'?", nearest->key)}
                   : Containers::String{};
}

}}
