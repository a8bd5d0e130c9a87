#ifndef Orrelin_test_Project_h
#define Orrelin_test_Project_h

#include <sstream>
#include <string>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "ChangeManager.h"
#include "JsonText.h"
#include "Tools/LocalizationTools.h"
#include "session/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "editor/RapidJsonUtils.h"

namespace OrrelinEngine {

inline std::string text(Containers::StringView view) {
    return {view.data(), view.size()};
}

/* What is printed as long as it exists */
class Printed {
public:
    std::string text() const { return _out.str(); }

private:
    std::ostringstream _out;
    Utility::Warning _warning{&_out};
    Utility::Error _error{&_out};
};

/* An open project. Each member of its "texts" is a term of the same name,
   except for the flags that exclude others from translation. */
class Project {
public:
    explicit Project(
        Containers::StringView json, Containers::StringView root = {}):
        _session{root} {
        if(!_session.parse(json))
            ADD_FAILURE() << "no project: " << text(json);
        for(const Containers::StringView key: editor().project["texts"].keys())
            if(!key.hasSuffix("_translate"))
                terms().emplace(key, "/texts/" + key);
    }

    OrrelinEditor& editor() { return _session.editor(); }
    ProjectFile& file() { return _session.projectFile(); }
    ChangeManager& changes() { return _session.changeManager(); }
    TermPathMap& terms() { return _session.localization().terms; }
    LanguageTranslations& translations() {
        return _session.localization().translations;
    }

    /* The value at a record path as JSON, nothing if there is none */
    std::string stored(Containers::StringView path) {
        const JsonValue* const value =
            RapidJsonUtils::valueByPointer(file().document, path);
        return value ? jsonText(*value) : std::string{};
    }

    /* From an object of objects of texts or null, as translationsText() */
    void setTranslations(const char* json) {
        const JsonDocument document = jsonDocument(json);
        ASSERT_TRUE(document.IsObject()) << json;
        for(const auto& language: document.GetObject()) {
            TranslationMap& out = translations()[language.name.GetString()];
            for(const auto& i: language.value.GetObject()) {
                auto& translation = out[Containers::String{
                    i.name.GetString(), i.name.GetStringLength()}];
                if(i.value.IsString())
                    translation = Containers::String{
                        i.value.GetString(), i.value.GetStringLength()};
            }
        }
    }

    std::string translationsText() {
        rapidjson::StringBuffer out;
        rapidjson::Writer<rapidjson::StringBuffer> writer{out};
        writer.StartObject();
        for(const auto& language: std::map<std::string, TranslationMap>{
                translations().begin(), translations().end()}) {
            writer.Key(language.first.data());
            writer.StartObject();
            for(const auto& i: language.second) {
                writer.Key(i.first.data(), unsigned(i.first.size()));
                if(i.second)
                    writer.String(i.second->data(), unsigned(i.second->size()));
                else
                    writer.Null();
            }
            writer.EndObject();
        }
        writer.EndObject();
        return out.GetString();
    }

private:
    EditorSession _session;
};

}

#endif
