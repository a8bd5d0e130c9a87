#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Format.h>

#include "vectors.h"

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using namespace OrrelinEngine;
using Utility::format;

TEST(Format, vectors) {
    const rapidjson::Value& expected = vectors("format");
    EXPECT_EQ(
        format("k{}-text-{}", 3, std::size_t{2}), stringView(expected[0]));
    EXPECT_EQ(format("{{}}.json"), stringView(expected[2]));
    EXPECT_EQ(format("{}/{}.zip", Containers::String{"/p/lang"}, "Demo"),
        stringView(expected[3]));
}

TEST(Format, numbers) {
    EXPECT_EQ(
        format("{:.1f} {:.4x} {:.8x} {} {}", 99.96, 0x1f, ~0u, -37, ~0ull),
        "100.0 001f ffffffff -37 18446744073709551615"_s);
}

}
