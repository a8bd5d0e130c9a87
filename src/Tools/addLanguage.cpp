#include <unordered_map>
#include <Corrade/Utility/Assert.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "Tools/StoredTerms.h"
#include "editor/AllLanguages.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* That many members are gone through in some hundredths of a second */
constexpr std::size_t MaxSearched = 1 << 24;

/* What the project's texts read, where it stores none as the editor has it */
class SourceTexts {
public:
    explicit SourceTexts(const OrrelinEditor& editor):
        _editor(editor), _storedTerms{editor} {}

    Containers::StringView find(Containers::StringView path) {
        const StoredTerm stored = _storedTerms.find(path);
        return stored.value ? stored.text() : findDefault(path);
    }

private:
    /* Before an accessor asks other sources, it searches the object that lacks
       the value. One that was searched so long in vain is believed to be
       without defaults, else many terms that are gone took forever. */
    Containers::StringView findDefault(Containers::StringView path) {
        const JsonValue* const place = _storedTerms.innermost(path);
        std::size_t& searched = _searched[place];
        if(searched > MaxSearched)
            return {};
        const Containers::StringView out = _editor.project[path].asString();
        if(out.isEmpty() && place && place->IsObject())
            searched += place->MemberCount();
        return out;
    }

    const OrrelinEditor& _editor;
    StoredTerms _storedTerms;
    /* Members gone through in vain, by the object */
    std::unordered_map<const JsonValue*, std::size_t> _searched;
};

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
    SourceTexts sources{editor};
    /* Both are in the same order, so each entry's place is next to the last */
    auto next = translations.begin();
    for(const auto& term: editor.localization->terms) {
        while(next != translations.end() && StrLess{}(next->first, term.first))
            ++next;
        next = translations.emplace_hint(next, term.first, Containers::NullOpt);
        if(first)
            next->second = Containers::String{sources.find(term.second)};
        else
            next->second = Containers::NullOpt;
        ++next;
    }
}

}}
