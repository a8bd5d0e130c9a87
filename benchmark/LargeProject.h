#ifndef Orrelin_benchmark_LargeProject_h
#define Orrelin_benchmark_LargeProject_h

#include <string>
#include <Corrade/Containers/StringStl.h>

#include "Tools/LocalizationTools.h"
#include "session/EditorSession.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "keepFreedMemory.h"

namespace OrrelinEngine {

/* The text of a term in every language; lengths differ */
inline std::string sentence(std::size_t i) {
    return "Gallery " + std::to_string(i) +
        std::string{": tells how people found their way by the stars."}.substr(
            0, 20 + i * 7 % 29);
}

/* A project of English texts, ten of each object, and its terms gathered */
class LargeProject {
public:
    explicit LargeProject(std::size_t terms) {
        std::string json = R"({
            "settings": {"localization": {"defaultLanguage": "en"}},
            "languages": {"en": {}, "de": {}}, "objects": {)";
        for(std::size_t i = 0; i != terms; ++i) {
            if(i % 10 == 0)
                json += (i ? "]}, \"exhibit-" : "\"exhibit-") +
                    std::to_string(i / 10) + "\": {\"components\": [";
            json += (i % 10 ? ", " : "") +
                (R"({"type": "text", "text": {"text": ")" + sentence(i)) +
                "\"}}";
        }
        session.parse(json + "]}}}");
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
};

}

#endif
