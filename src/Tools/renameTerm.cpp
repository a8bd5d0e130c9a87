#include <utility>

#include "Tools/LocalizationTools.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

void renameTranslation(TranslationMap& translations,
    Containers::StringView oldName, Containers::StringView newName) {
    const auto found = translations.find(oldName);
    if(found == translations.end())
        return;
    translations.emplace(newName, std::move(found->second));
    translations.erase(found);
}

}

void renameTerm(OrrelinEditor& editor, Containers::StringView oldName,
    Containers::StringView newName, TermMap& strings) {
    if(newName == oldName)
        return;

    /* Either name may be a view of a key that's about to be erased */
    const Containers::String from{oldName};
    const Containers::String to{newName};
    for(auto& language: editor.localization->translations)
        renameTranslation(language.second, from, to);

    TermPathMap& terms = editor.localization->terms;
    const auto found = terms.find(from);
    if(found == terms.end())
        return;
    strings[found->second] = to;
    terms.emplace(to, std::move(found->second));
    terms.erase(found);
}

}}
