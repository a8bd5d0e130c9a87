#ifndef Orrelin_Test_Tools_Museum_h
#define Orrelin_Test_Tools_Museum_h

#include <vector>

#include "Project.h"
#include "TemporaryFolder.h"
#include "editor/JavaScriptManager.h"

namespace OrrelinEngine {

/* The example project with its component types, and its terms gathered */
class Museum {
public:
    explicit Museum() {
        JsonDocument types;
        types.Parse(
            TemporaryFolder::readFile(EXAMPLES "/museum/components.json")
                .data());
        EXPECT_TRUE(types.IsObject());
        for(const auto& type: types.GetObject()) {
            std::vector<
                Containers::Pair<Containers::StringView, unsigned short>>
                parameters;
            for(const auto& i: type.value.GetObject())
                parameters.push_back({i.name.GetString(),
                    static_cast<unsigned short>(
                        i.value == "string" ? Data::StringParamType : 0)});
            session.addScriptType(type.name.GetString(),
                Containers::arrayView(parameters.data(), parameters.size()));
        }
        EXPECT_TRUE(session.open(EXAMPLES "/museum/project.json"));
        LocalizationTools::gatherStrings(session.editor(), strings);
    }

    EditorSession session;
    TermMap strings;
};

}

#endif
