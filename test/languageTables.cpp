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
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "editor/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "shared/LocalizationData.h"

using namespace OrrelinEngine;

namespace {

typedef rapidjson::Writer<rapidjson::StringBuffer> Writer;

void write(Writer& writer, Containers::StringView text) {
    writer.String(
        text.data() ? text.data() : "", rapidjson::SizeType(text.size()));
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

    JsonDocument document;
    document.SetObject();
    JsonAllocator& allocator = document.GetAllocator();
    JsonValue components{rapidjson::kArrayType};
    std::size_t i = 0;
    for(const char* key: keys) {
        JsonValue text{rapidjson::kObjectType};
        text.AddMember("text",
            JsonValue{texts[i++ % (sizeof(texts) / sizeof(*texts))], allocator},
            allocator);
        text.AddMember("text_term", JsonValue{key, allocator}, allocator);
        JsonValue component{rapidjson::kObjectType};
        component.AddMember("type", "text", allocator);
        component.AddMember("text", text, allocator);
        components.PushBack(component, allocator);
    }
    session.projectFile().document.Parse(R"({
        "settings": {"localization": {"defaultLanguage": "en"}},
        "objects": {"hard": {}},
        "languages": {"en": {}, "de": {}}
    })");
    session.projectFile()["objects/hard/components"].writeValue().CopyFrom(
        components, session.projectFile().allocator());

    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    auto& german = session.localization().translations["de"];
    i = 3;
    for(const auto& term: session.localization().terms) {
        ++i;
        /* Every fifth has none, of the others each text comes up */
        if(i % 5)
            german[term.first] =
                Containers::String{texts[i % (sizeof(texts) / sizeof(*texts))]};
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
    rapidjson::StringBuffer out;
    Writer writer{out};
    OrrelinEditor& editor = session.editor();
    const Containers::String defaultLanguage{
        editor.project["settings/localization/defaultLanguage"].asString()};

    writer.StartObject();
    for(const Containers::StringView language: editor.languagesSection.keys()) {
        write(writer, language);
        writer.StartObject();
        TranslationMap& translations =
            session.localization().translations[language];
        for(const auto& term: session.localization().terms) {
            if(!LocalizationTools::termExists(editor, term.first))
                continue;
            write(writer, term.first);
            const auto found = translations.find(term.first);
            if(language == defaultLanguage)
                write(writer, editor.project[term.second].asString());
            else if(found != translations.end() && found->second)
                write(writer, *found->second);
            else
                writer.Null();
        }
        writer.EndObject();
    }
    writer.EndObject();
    std::printf("%s\n", out.GetString());
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
