#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Format.h>

#include "vectors.h"

namespace OrrelinEngine { namespace {

using Utility::format;

TEST(FormatTest, vectors) {
    const rapidjson::Value& expected = vectors("format");
    EXPECT_EQ(
        format("k{}-text-{}", 3, std::size_t{2}), stringView(expected[0]));
    EXPECT_EQ(format("{{}}.json"), stringView(expected[2]));
    EXPECT_EQ(format("{}/{}.zip", Containers::String{"/p/lang"}, "Demo"),
        stringView(expected[3]));
    EXPECT_EQ(
        format("{:.1f} {:.4x} {:.8x} {} {}", 99.96, 0x1f, ~0u, -37, ~0ull),
        Containers::StringView{"100.0 001f ffffffff -37 18446744073709551615"});
}

}}
