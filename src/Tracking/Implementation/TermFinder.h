#ifndef Orrelin_Tracking_Implementation_TermFinder_h
#define Orrelin_Tracking_Implementation_TermFinder_h

#include <algorithm>

#include "Tracking/Term.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Tracking {

/* Finds terms by their keys. Exported files list them in the order of the
   table, so the term behind the last one is tried before searching. */
class TermFinder {
public:
    static constexpr std::size_t NotFound = ~std::size_t{};

    explicit TermFinder(const std::vector<Term>& terms): _terms(terms) {}

    /* Index of the term, or NotFound */
    std::size_t find(Containers::StringView key) {
        if(_next == _terms.size() || _terms[_next].key != key)
            _next =
                std::size_t(std::lower_bound(_terms.begin(), _terms.end(), key,
                                [](const Term& term, Containers::StringView k) {
                                    return StrLess{}(term.key, k);
                                }) -
                    _terms.begin());
        return _next == _terms.size() || _terms[_next].key != key ? NotFound
                                                                  : _next++;
    }

private:
    const std::vector<Term>& _terms;
    std::size_t _next = 0;
};

}}

#endif
