#include <vector>

#include "Project.h"
#include "editor/JavaScriptManager.h"

namespace OrrelinEngine { namespace {

/* Types have 16-bit indices of which one stands for none, and so have all
   parameters together */
TEST(JavaScriptManagerTest, limits) {
    Data::JavaScriptManager<unsigned short> types;
    const auto add = [&](std::size_t count) {
        const std::vector<
            Containers::Pair<Containers::StringView, unsigned short>>
            parameters(count, {"name", 16});
        return types.addType("type",
            Containers::arrayView(parameters.data(), parameters.size()));
    };
    EXPECT_FALSE(add(65536));
    EXPECT_EQ(*types.typeCount, 0u);
    EXPECT_TRUE(add(65534));
    EXPECT_FALSE(add(2));
    EXPECT_TRUE(add(1));
    EXPECT_EQ(text(types.paramNames(1).get(0)), "name");
    EXPECT_FALSE(add(1));
    EXPECT_DEATH(types.paramNames(2),
        testing::Eq("JavaScriptManager::paramNames(): invalid type 2 for 2 "
                    "types\n"));

    for(int i = 2; i != 65535; ++i)
        ASSERT_TRUE(add(0));
    EXPECT_FALSE(add(0));
}

}}
