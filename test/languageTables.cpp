/* Exports a project and prints the tables that it was exported from, for
   another reader of the files to be compared with.

   languageTables PROJECT FOLDER   exports an existing project with the
                                   language files that it has
   languageTables --hard FOLDER    exports terms whose keys and texts are hard
                                   on readers

   With --from FILES at the end, all translations are forgotten before and
   those in the folder FILES imported. */

#include <cstdio>
#include <string>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "JsonText.h"
#include "Tools/LocalizationTools.h"
#include "session/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "shared/LocalizationData.h"

using namespace OrrelinEngine;

namespace {

std::string quoted(Containers::StringView text) {
    return jsonText(JsonValue{
        text.data() ? text.data() : "", rapidjson::SizeType(text.size())});
}

/* One text component for each key, its text telling what is hard on it */
void openHardProject(EditorSession& session) {
    const char* const keys[]{"plain", "with.dots.in.it", "ends.with.dot.",
        "with", "with.dots", "ns:key", "a: sentence, really?", "time 12:30",
        "\"quoted\"", "it's", "two words", " leading", "back\\slash", "a/b",
        "sum_one", "sum_other", "male_male", "42", "ключ", "鍵", "\U0001F511",
        "constructor", "__proto__", "translation"};
    const char* const texts[]{"Plain", "", " ", "{{name}} has {{count}}",
        "$t(plain)", "$t(missing)", "a\nb\tc", "\"quoted\"", "ümläut", "日本語",
        "\U0001F5FF", "<b>bold</b>", "50 % & more", "null", "{{", "\\n"};

    constexpr std::size_t textCount = sizeof(texts) / sizeof(*texts);
    std::string components;
    std::size_t i = 0;
    for(const char* key: keys) {
        components += (i ? ",{" : "{") +
            ("\"type\":\"text\",\"text\":{\"text\":" +
                quoted(texts[i % textCount]) + ",\"text_term\":" + quoted(key) +
                "}}");
        ++i;
    }
    session.parse(R"({"settings": {"localization": {"defaultLanguage": "en"}},
        "languages": {"en": {}, "de": {}},
        "objects": {"hard": {"components": [)" +
        components + "]}}}");

    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    auto& german = session.localization().translations["de"];
    i = 3;
    for(const auto& term: session.localization().terms) {
        ++i;
        /* Every fifth has none, of the others each text comes up */
        if(i % 5)
            german[term.first] = Containers::String{texts[i % textCount]};
    }
}

bool openProject(EditorSession& session, const char* file) {
    /* What the sample project's script components are */
    const Containers::Optional<Containers::String> types =
        Utility::Path::readString(
            Utility::Path::join(Utility::Path::path(file), "components.json"));
    if(!types || !session.open(file))
        return false;
    rapidjson::Document document;
    document.Parse(types->data());
    for(const auto& type: document.GetObject()) {
        Containers::Array<
            Containers::Pair<Containers::StringView, unsigned short>>
            parameters;
        for(const auto& parameter: type.value.GetObject())
            arrayAppend(parameters, Corrade::InPlaceInit,
                parameter.name.GetString(),
                static_cast<unsigned short>(
                    parameter.value == "string" ? 16 : 1));
        session.addScriptType(type.name.GetString(), parameters);
    }
    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    LocalizationTools::importTerms(session.editor());
    session.changeManager().undoLast();
    return true;
}

/* Each language's text of each term, null where there is none */
void printTables(EditorSession& session) {
    OrrelinEditor& editor = session.editor();
    const Containers::String defaultLanguage{
        editor.project["settings/localization/defaultLanguage"].asString()};
    const char* languageBegin = "{";
    for(const Containers::StringView language: editor.languagesSection.keys()) {
        std::printf("%s%s:", languageBegin, quoted(language).data());
        languageBegin = ",";
        TranslationMap& translations =
            session.localization().translations[language];
        const char* begin = "{";
        for(const auto& term: session.localization().terms) {
            if(!LocalizationTools::termExists(editor, term.first))
                continue;
            const auto found = translations.find(term.first);
            std::string text = "null";
            if(language == defaultLanguage)
                text = quoted(editor.project[term.second].asString());
            else if(found != translations.end() && found->second)
                text = quoted(*found->second);
            std::printf(
                "%s%s:%s", begin, quoted(term.first).data(), text.data());
            begin = ",";
        }
        std::printf("}");
    }
    std::printf("}\n");
}

}

int main(int argc, char** argv) {
    const bool imports = argc == 5 && argv[3] == std::string{"--from"};
    if(argc != 3 && !imports)
        return 1;
    EditorSession session;
    if(argv[1] == std::string{"--hard"})
        openHardProject(session);
    else if(!openProject(session, argv[1]))
        return 2;
    if(imports) {
        session.localization().translations.clear();
        LocalizationTools::importTerms(session.editor(), argv[4],
            LocalizationTools::LocalizationFormat::I18next);
    }

    Containers::Array<Containers::String> languages;
    for(const Containers::StringView code:
        session.editor().languagesSection.keys())
        arrayAppend(languages, Containers::String{code});
    LocalizationTools::exportTerms(session.editor(), languages, argv[2],
        LocalizationTools::LocalizationFormat::I18next);
    printTables(session);
}
