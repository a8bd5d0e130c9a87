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

TEST(JavaScriptManagerTest, types) {
    ScriptTypes types;
    EXPECT_EQ(*types.typeCount, 0u);
    EXPECT_EQ(types.typeNames.size(), 0u);
    EXPECT_EQ(types.paramRangeCount, 0u);

    const std::uint32_t* const count = types.typeCount;
    ASSERT_TRUE(add(types, "button", {{"label", 16}, {"size", 3}}));
    ASSERT_TRUE(add(types, "marker", {}));
    /* Doesn't replace the first */
    ASSERT_TRUE(add(types, "button", {{"tooltip", 16}}));

    EXPECT_EQ(*count, 3u);
    ASSERT_EQ(types.typeNames.size(), 3u);
    ASSERT_EQ(types.paramRangeCount, 3u);
    std::string all;
    for(unsigned short i = 0; i != 3; ++i) {
        all += text(types.typeNames.get(i)) + ": ";
        const StringArrayView names = types.paramNames(i);
        ASSERT_EQ(types.paramRanges[i].count, names.size());
        for(std::size_t j = 0; j != names.size(); ++j)
            all += text(names.get(j)) + ' ' +
                std::to_string(
                    types.paramTypes[types.paramRanges[i].first + j]) +
                ' ';
    }
    EXPECT_EQ(all, "button: label 16 size 3 marker: button: tooltip 16 ");
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
