#include <cstdlib>
#include <gtest/gtest.h>

#include "vectors.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace {

using Containers::StringView;
using namespace Containers::Literals;

TEST(StringFunctorsTest, hash) {
    for(const auto& entry: vectors("murmurHash2").GetArray())
        EXPECT_EQ(StrHash{}(stringView(entry["bytes"])),
            std::strtoull(entry["value"].GetString(), nullptr, 0))
            << entry["bytes"].GetString();
    EXPECT_EQ(StrHash{}(StringView{}), StrHash{}(""_s));
}

TEST(StringFunctorsTest, order) {
    /* Each before all that follow */
    const StringView ordered[]{""_s, "\0"_s, "\0a"_s, "B"_s, "a"_s, "a\0"_s,
        "ab"_s, "b"_s, "\x7f"_s, "\xc3\xa9"_s, "\xff"_s};
    for(const StringView& a: ordered)
        for(const StringView& b: ordered) {
            EXPECT_EQ(StrLess{}(a, b), &a < &b);
            EXPECT_EQ(StrEq{}(a, b), &a == &b);
        }
    EXPECT_FALSE(StrLess{}({}, ""_s));
    EXPECT_TRUE(StrEq{}({}, ""_s));
}

}}
