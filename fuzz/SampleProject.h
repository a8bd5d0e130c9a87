#ifndef Orrelin_fuzz_SampleProject_h
#define Orrelin_fuzz_SampleProject_h

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "TemporaryFolder.h"
#include "session/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace Fuzz {

/* Stops the fuzzer with a finding */
inline void expect(bool condition) {
    if(!condition)
        std::abort();
}

/* A small project with everything that's gathered */
constexpr const char* SampleProject = R"({
    "settings": {
        "project": {"name": "Sample"},
        "localization": {"defaultLanguage": "en"}
    },
    "objects": {
        "a": {"components": [
            {"type": "text", "text": {"text": "Hello", "text_term": "hello"}},
            {"type": "text", "text": {"text": "No", "text_translate": false}}
        ]},
        "b": {"components": [{"type": "button", "button": {"label": "OK"}}]}
    },
    "languages": {"en": {"name": "English"}, "de": {"name": "German"}}
})";

inline void writeFile(
    const std::string& file, const std::uint8_t* data, std::size_t size) {
    std::ofstream{file, std::ios::binary}.write(
        reinterpret_cast<const char*>(data), std::streamsize(size));
}

inline void registerButton(EditorSession& session) {
    const Containers::Pair<Containers::StringView, unsigned short> parameters[]{
        {"label", 16}, {"enabled", 1}};
    session.addScriptType("button", parameters);
}

inline bool isUtf8(const JsonValue& value) {
    rapidjson::StringBuffer out;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>,
        rapidjson::UTF8<>, rapidjson::CrtAllocator,
        rapidjson::kWriteValidateEncodingFlag>
        writer{out};
    return value.Accept(writer);
}

/* Everything that can be written has to be JSON and UTF-8 */
inline void expectValidFiles(EditorSession& session) {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(session.editor(), {"en", "de", "fr"},
        LocalizationTools::LocalizationFormat::I18next, names, contents);
    for(const Containers::Array<char>& content: contents) {
        JsonDocument file;
        file.Parse(content.data(), content.size());
        expect(!file.HasParseError() && isUtf8(file));
    }
}

/* Imports from a path and checks what has to hold whatever is there */
inline void importAndCheck(const std::string& path) {
    Utility::Error silentErrors{nullptr};
    Utility::Warning silentWarnings{nullptr};

    EditorSession session;
    registerButton(session);
    expect(session.parse(SampleProject));
    TermMap strings;
    LocalizationTools::gatherStrings(session.editor(), strings);
    const TermPathMap terms = session.localization().terms;
    const JsonValue& objects = session.projectFile().document["objects"];
    JsonDocument before;
    before.CopyFrom(objects, before.GetAllocator());

    LocalizationTools::importTerms(session.editor(), path.data(),
        LocalizationTools::LocalizationFormat::I18next);

    expect(session.localization().terms == terms);
    for(const auto& language: session.localization().translations)
        for(const auto& translation: language.second)
            if(translation.second)
                expect(isUtf8(JsonValue{rapidjson::StringRef(
                    translation.second->data(), translation.second->size())}));
    expectValidFiles(session);
    /* One undo step at most, and it takes every text back */
    session.changeManager().undoLast();
    expect(!session.changeManager().hasUnsavedChanges());
    expect(session.projectFile().document["objects"] == before);
}

}}

#endif
