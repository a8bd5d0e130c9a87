#include <gtest/gtest.h>

#include "ChangeManager.h"
#include "JsonText.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine {

namespace {

const JsonValue* known;

}

/* Takes the place of the one in the editor's library: an editor's accessors may
   know values to which no pointer into the document leads */
const JsonValue* RecordAccess::readValueNoDefault() const {
    return known;
}

namespace {

/* A value that's known is a member, though its name looks like an element's */
TEST(DocumentEditsTest, valuesThatAccessorsKnow) {
    const char* const element = R"({"a":{"b":[null,null,1]}})";
    const char* const member = R"({"a":{"b":{"2":1}}})";
    const std::pair<const char*, const char*> data[]{{"", element},
        {"{}", element}, {"[]", element}, {"null", member}, {"\"x\"", member}};
    for(const auto& i: data) {
        SCOPED_TRACE(i.first);
        const JsonDocument value = jsonDocument(i.first);
        known = *i.first ? &value : nullptr;
        ProjectFile project;
        ChangeManager manager{project};
        manager.pushNumber("/a/b/2", 1, false);
        EXPECT_EQ(jsonText(project.document), i.second);
        known = nullptr;
    }
}

}

}
