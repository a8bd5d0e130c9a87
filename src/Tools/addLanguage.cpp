#include <Corrade/Utility/Assert.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/StoredTerms.h"
#include "editor/AllLanguages.h"
#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* The text that an accessor would read, with the editor's defaults. Accessors
   are slow, so only texts that aren't stored take one. */
Containers::StringView sourceText(const OrrelinEditor& editor,
    StoredTerms& storedTerms, Containers::StringView path) {
    const JsonValue* const stored = storedTerms.find(path).value;
    return stored && stored->IsString() ? stringOf(*stored)
                                        : editor.project[path].asString();
}

}

void addLanguage(OrrelinEditor& editor, unsigned short languageIndex) {
    CORRADE_INTERNAL_ASSERT(languageIndex < AllLanguageCount);
    const bool first = editor.languagesSection.size() == 0;
    const Language& language = AllLanguages[languageIndex];

    const ValueAccess record = editor.languagesSection[language.code];
    editor.languagesSection.addResource(language.code);
    record["name"].setString(language.name);
    if(first)
        editor.project["settings/localization/defaultLanguage"].setString(
            language.code);

    TranslationMap& translations =
        editor.localization->translations[Containers::String{language.code}];
    StoredTerms storedTerms{editor};
    /* Both are in the same order, so each entry's place is next to the last */
    auto next = translations.begin();
    for(const auto& term: editor.localization->terms) {
        while(next != translations.end() && StrLess{}(next->first, term.first))
            ++next;
        next = translations.emplace_hint(next, term.first, Containers::NullOpt);
        if(first)
            next->second = Containers::String{
                sourceText(editor, storedTerms, term.second)};
        else
            next->second = Containers::NullOpt;
        ++next;
    }
}

}}
