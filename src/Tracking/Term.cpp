#include "Tracking/Term.h"

#include "Tools/Implementation/StoredTerms.h"
#include "editor/OrrelinEditor.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace Tracking {

std::vector<Term> listTerms(const OrrelinEditor& editor) {
    std::vector<Term> out;
    out.reserve(editor.localization->terms.size());
    LocalizationTools::StoredTerms stored{editor};
    for(const auto& term: editor.localization->terms) {
        const LocalizationTools::StoredTerm found = stored.find(term.second);
        out.push_back(
            {term.first, term.second, found.text(), found.translated});
    }
    return out;
}

bool isGenerated(const OrrelinEditor& editor, const Term& term) {
    return !editor.project[term.path + "_term"].hasValue();
}

}}
