#include <vector>
#include <Corrade/Utility/Assert.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/StoredTerms.h"
#include "editor/AllLanguages.h"
#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* While it exists, the document stores nothing, so accessors read the schema
   and the defaults. To find out that a value isn't stored would cost each of
   them a search of the object. */
class HiddenDocument {
public:
    explicit HiddenDocument(OrrelinEditor& editor):
        _root(editor.project.writeValue()) {
        _root.Swap(_stored);
    }
    HiddenDocument(const HiddenDocument&) = delete;
    ~HiddenDocument() { _root.Swap(_stored); }
    HiddenDocument& operator=(const HiddenDocument&) = delete;

private:
    JsonValue& _root;
    JsonValue _stored;
};

/* The texts of all terms, as accessors read them. Each term has a translation
   already. */
void fillSourceTexts(OrrelinEditor& editor, TranslationMap& translations) {
    struct Text {
        Containers::StringView path;
        Containers::Optional<Containers::String>* out;
    };
    std::vector<Text> absent;
    StoredTerms storedTerms{editor};
    auto next = translations.begin();
    for(const auto& term: editor.localization->terms) {
        while(next->first != term.first)
            ++next;
        const JsonValue* const stored = storedTerms.find(term.second).value;
        if(!stored)
            absent.push_back({term.second, &next->second});
        else
            next->second = Containers::String{stored->IsString()
                    ? stringOf(*stored)
                    : editor.project[term.second].asString()};
    }

    if(absent.empty())
        return;
    const HiddenDocument hidden{editor};
    for(const Text& text: absent)
        *text.out = Containers::String{editor.project[text.path].asString()};
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
    /* Both are in the same order, so each entry's place is next to the last */
    auto next = translations.begin();
    for(const auto& term: editor.localization->terms) {
        while(next != translations.end() && StrLess{}(next->first, term.first))
            ++next;
        next = translations.emplace_hint(next, term.first, Containers::NullOpt);
        next->second = Containers::NullOpt;
        ++next;
    }
    if(first)
        fillSourceTexts(editor, translations);
}

}}
