#include <memory>
#include <gtest/gtest.h>

#include "shared/StaticMap.h"

namespace OrrelinEngine { namespace {

TEST(StaticMapTest, find) {
    StaticMap<int> map;
    EXPECT_EQ(map.find("a"), nullptr);

    /* Signed bytes would order the last one first */
    const char* const keys[]{"b", "a", "B", "ab", "abc", "\xc3\xa4"};
    map.grow(6);
    for(int i = 0; i != 6; ++i)
        EXPECT_EQ(*map.put(keys[i], i + 0), i);
    map.compile();
    /* Needs no compiling */
    map.grow(10);
    EXPECT_EQ(map.size(), 6);
    EXPECT_EQ(map.capacity(), 16);
    for(int i = 0; i != 6; ++i)
        EXPECT_EQ(*map.find(keys[i]), i);
    for(const char* key: {"", "A", "aa", "abcd", "c", "\xc3", "\xff"})
        EXPECT_EQ(map.find(key), nullptr) << key;
}

TEST(StaticMapTest, clear) {
    const auto value = std::make_shared<int>();
    StaticMap<std::shared_ptr<int>> map;
    map.grow(3);
    map.put("a", std::shared_ptr<int>{value});
    map.compile();
    map.clear();
    EXPECT_EQ(value.use_count(), 1);
    EXPECT_EQ(map.size(), 0);
    EXPECT_EQ(map.capacity(), 3);
    EXPECT_EQ(map.find("a"), nullptr);
}

TEST(StaticMapDeathTest, violations) {
    StaticMap<int> map;
    EXPECT_DEATH(map.put("a", 1),
        testing::Eq("StaticMap::put(): capacity exhausted.\n"));
    EXPECT_DEATH(map.put("", 1),
        testing::Eq("StaticMap::put(): key cannot be nullptr.\n"));
    map.grow(1);
    map.put("a", 1);
    /* Stays as it is */
    map.clear();
    EXPECT_DEATH(map.find("a"),
        testing::Eq("StaticMap::find(): Map needs to be compiled.\n"));
}

}}
