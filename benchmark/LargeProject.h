#ifndef Orrelin_Benchmark_LargeProject_h
#define Orrelin_Benchmark_LargeProject_h

#include <malloc.h>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "editor/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine {

/* Memory that was freed is used again instead of being given back, as otherwise
   it's page faults that are measured */
inline void keepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
}

/* What terms read in any language, in sentences of different length */
inline std::string sentence(std::size_t i) {
    return "Gallery " + std::to_string(i) +
        std::string{": tells how people found their way by the stars."}.substr(
            0, 20 + i * 7 % 29);
}

/* A project of English texts, ten of each object, and its terms gathered */
class LargeProject {
public:
    explicit LargeProject(std::size_t terms) {
        JsonDocument& document = session.projectFile().document;
        JsonAllocator& allocator = document.GetAllocator();
        document.Parse(R"({
            "settings": {"localization": {"defaultLanguage": "en"}},
            "objects": {}, "languages": {"en": {}, "de": {}}
        })");
        JsonValue& objects = document["objects"];
        JsonValue components;
        for(std::size_t i = 0; i != terms; ++i) {
            if(i % 10 == 0)
                components.SetArray();
            components.PushBack(component(i, allocator), allocator);
            if(i % 10 == 9 || i + 1 == terms)
                objects.AddMember(
                    JsonValue{("exhibit-" + std::to_string(i / 10)).data(),
                        allocator},
                    JsonValue{rapidjson::kObjectType}.AddMember(
                        "components", components, allocator),
                    allocator);
        }
        TermMap strings;
        LocalizationTools::gatherStrings(session.editor(), strings);
    }

    void translate(Containers::StringView language) {
        const OrrelinEditor& editor = session.editor();
        TranslationMap& out = editor.localization->translations[language];
        for(const auto& term: editor.localization->terms)
            out.emplace_hint(out.end(), term.first,
                Containers::String{editor.project[term.second].asString()});
    }

    EditorSession session;

private:
    static JsonValue component(std::size_t i, JsonAllocator& allocator) {
        JsonValue text{rapidjson::kObjectType};
        text.AddMember(
            "text", JsonValue{sentence(i).data(), allocator}, allocator);
        JsonValue out{rapidjson::kObjectType};
        out.AddMember("type", "text", allocator)
            .AddMember("text", text, allocator);
        return out;
    }
};

}

#endif
