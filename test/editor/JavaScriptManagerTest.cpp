#include <string>
#include <vector>
#include <gtest/gtest.h>

#include "Project.h"
#include "editor/JavaScriptManager.h"

namespace OrrelinEngine { namespace {

typedef Data::JavaScriptManager<unsigned short> ScriptTypes;
typedef std::vector<Containers::Pair<Containers::StringView, unsigned short>>
    Parameters;

bool add(ScriptTypes& types, Containers::StringView name,
    const Parameters& parameters) {
    return types.addType(
        name, Containers::arrayView(parameters.data(), parameters.size()));
}

TEST(JavaScriptManagerTest, limits) {
    ScriptTypes types;
    EXPECT_FALSE(add(types, "most", Parameters(65536, {"name", 16})));
    EXPECT_EQ(*types.typeCount, 0u);
    EXPECT_TRUE(add(types, "most", Parameters(65534, {"name", 16})));
    EXPECT_FALSE(add(types, "two", {{"a", 16}, {"b", 16}}));
    EXPECT_TRUE(add(types, "one", {{"last", 16}}));
    EXPECT_EQ(text(types.paramNames(1).get(0)), "last");
    EXPECT_FALSE(add(types, "more", {{"a", 16}}));

    for(int i = 2; i != 65535; ++i)
        ASSERT_TRUE(add(types, "none", {}));
    EXPECT_FALSE(add(types, "none", {}));
    EXPECT_EQ(*types.typeCount, 65535u);
    EXPECT_EQ(types.paramNames(65534).size(), 0u);
}

TEST(JavaScriptManagerDeathTest, paramNamesOutOfRange) {
    ScriptTypes types;
    ASSERT_TRUE(add(types, "marker", {}));
    EXPECT_DEATH(types.paramNames(1),
        testing::Eq("JavaScriptManager::paramNames(): invalid type 1 for 1 "
                    "types\n"));
}

}}
