#include <cstdlib>
#include <string>
#include <vector>
#include <gtest/gtest.h>

#include "vectors.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine { namespace {

using Containers::StringView;
using Containers::StringViewFlag;
using namespace Containers::Literals;

TEST(StringFunctorsTest, hash) {
    for(const auto& entry: vectors("murmurHash2").GetArray()) {
        SCOPED_TRACE(entry["bytes"].GetString());
        EXPECT_EQ(StrHash{}(stringView(entry["bytes"])),
            std::strtoull(entry["value"].GetString(), nullptr, 0));
    }
    EXPECT_EQ(StrHash{}(StringView{}), StrHash{}(""_s));
}

TEST(StringFunctorsTest, flagsDontCount) {
    const char data[] = "term";
    const StringView plain{data, 4};
    const StringView flagged{
        data, 4, StringViewFlag::NullTerminated | StringViewFlag::Global};
    EXPECT_EQ(StrHash{}(plain), StrHash{}(flagged));
    EXPECT_TRUE(StrEq{}(plain, flagged));
    EXPECT_FALSE(StrLess{}(plain, flagged));
    EXPECT_FALSE(StrLess{}(flagged, plain));
}

TEST(StringFunctorsTest, order) {
    /* Each before all that follow */
    const std::vector<StringView> ordered{""_s, "\0"_s, "\0a"_s, "B"_s, "a"_s,
        "a\0"_s, "ab"_s, "b"_s, "\x7f"_s, "\xc3\xa9"_s, "\xff"_s};
    for(std::size_t i = 0; i != ordered.size(); ++i)
        for(std::size_t j = 0; j != ordered.size(); ++j) {
            SCOPED_TRACE(std::to_string(i) + ", " + std::to_string(j));
            EXPECT_EQ(StrLess{}(ordered[i], ordered[j]), i < j);
            EXPECT_EQ(StrEq{}(ordered[i], ordered[j]), i == j);
        }
    EXPECT_FALSE(StrLess{}({}, ""_s));
    EXPECT_TRUE(StrEq{}({}, ""_s));
}

TEST(StringFunctorsTest, viewsFindOwnedKeys) {
    const std::string text = "xxk3-text-2xx";
    const StringView key{text.data() + 2, text.size() - 4};

    TranslationMap translations;
    translations.emplace("k3-text-2", Containers::NullOpt);
    translations.emplace("k3", "shorter");
    EXPECT_EQ(translations.find(key), ++translations.begin());
    EXPECT_EQ(translations.find(key.exceptSuffix(1)), translations.end());

    TermMap strings;
    strings.emplace("/path", "k3-text-2");
    EXPECT_EQ(strings.count("/path"_s), 1u);
    EXPECT_EQ(strings.count("/pat"_s), 0u);
}

}}
