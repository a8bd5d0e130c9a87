/* Exports a project and prints the tables that it was exported from, for
   another reader of the files to be compared with.

   languageTables PROJECT FOLDER [--from FILES]

   The tables are those of the project's language files or, if it's given, of
   those in the folder FILES. */

#include <cstdio>
#include <string>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "JsonText.h"
#include "Tools/LocalizationTools.h"
#include "editor/OrrelinEditor.h"
#include "project/ComponentTypes.h"
#include "session/EditorSession.h"

using namespace OrrelinEngine;

namespace {

constexpr auto Format = LocalizationTools::LocalizationFormat::I18next;

bool openProject(EditorSession& session, const char* file) {
    const Containers::String types = Utility::Path::join(
        Utility::Path::split(file).first(), "components.json");
    const auto content = Utility::Path::read(types);
    if((content &&
           !Host::addComponentTypes(
               session, types, {content->data(), content->size()})) ||
        !session.open(file))
        return false;
    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    return true;
}

/* Each language's text of each term, null where there is none */
void printTables(EditorSession& session,
    Containers::ArrayView<const Containers::String> all) {
    OrrelinEditor& editor = session.editor();
    const Containers::StringView defaultLanguage =
        editor.project["settings/localization/defaultLanguage"].asString();
    rapidjson::StringBuffer out;
    rapidjson::Writer<rapidjson::StringBuffer> writer{out};
    writer.StartObject();
    for(const Containers::String& language: all) {
        writer.Key(language.data());
        writer.StartObject();
        for(const auto& term: session.localization().terms) {
            if(!LocalizationTools::termExists(editor, term.first))
                continue;
            writer.Key(term.first.data());
            const auto& text =
                session.localization().translations[language][term.first];
            if(language == defaultLanguage)
                editor.project[term.second].readValue().Accept(writer);
            else if(text)
                writer.String(text->data(), unsigned(text->size()));
            else
                writer.Null();
        }
        writer.EndObject();
    }
    writer.EndObject();
    std::puts(out.GetString());
}

}

int main(int argc, char** argv) {
    if(argc != 3 && (argc != 5 || argv[3] != std::string{"--from"}))
        return 1;
    EditorSession session;
    if(!openProject(session, argv[1]))
        return 2;
    OrrelinEditor& editor = session.editor();
    if(argc == 5)
        LocalizationTools::importTerms(editor, argv[4], Format);
    else
        LocalizationTools::importTerms(editor);
    /* The project has texts of its own */
    session.changeManager().undoLast();

    Containers::Array<Containers::String> languages;
    for(const Containers::StringView code: editor.languagesSection.keys())
        arrayAppend(languages, Containers::String{code});
    LocalizationTools::exportTerms(editor, languages, argv[2], Format);
    printTables(session, languages);
}
