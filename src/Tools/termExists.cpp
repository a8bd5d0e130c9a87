#include "Tools/LocalizationTools.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

bool termExists(OrrelinEditor& editor, Containers::StringView term) {
    const TermPathMap& terms = editor.localization->terms;
    const auto found = terms.find(term);
    if(found == terms.end())
        return false;
    const ValueAccess flag = editor.project[found->second + "_translate"];
    return !flag.hasValue() || flag.asBool();
}

}}
