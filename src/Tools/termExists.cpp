#include "Tools/LocalizationTools.h"
#include "Tools/StoredTerms.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

bool termExists(OrrelinEditor& editor, Containers::StringView term) {
    const TermPathMap& terms = editor.localization->terms;
    const auto found = terms.find(term);
    return found != terms.end() &&
        StoredTerms{editor}.find(found->second).translated;
}

}}
