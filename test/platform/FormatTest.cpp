#include <Corrade/Containers/ArrayView.h>
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
    const Containers::String actual[]{format("k{}-text-{}", 3, std::size_t{2}),
        format("k{0}-{2}-{1}-label", 3u, short{0}, "js"_s), format("{{}}.json"),
        format("{}/{}.zip", Containers::String{"/p/lang"}, "Demo")};
    for(std::size_t i = 0; i != Containers::arraySize(actual); ++i)
        EXPECT_EQ(actual[i], stringView(expected[i]));
}

TEST(Format, specifiers) {
    EXPECT_EQ(format("{:.3} {:.2f} {} {}", 3.14159, 2.0f, 0.1f, 1.0e20),
        "3.14 2.00 0.1 1e+20"_s);
    EXPECT_EQ(format("{:.4} {:x} {:X} {}", -37, 255, -1, ~0ull),
        "-0037 ff FFFFFFFF 18446744073709551615"_s);
    EXPECT_EQ(format("{:.2}, {1} {}", "hello", true), "he, 1 {}"_s);
}

TEST(Format, into) {
    char buffer[6]{'?', '?', '?', '?', '?', '?'};
    EXPECT_EQ(Utility::formatInto(buffer, "{}{}", 12, "34"), 4);
    EXPECT_EQ(Containers::StringView(buffer, 4), "1234"_s);
    EXPECT_DEATH(Utility::formatInto(buffer, "{}", "toolong"),
        "Utility::formatInto\\(\\): ");
}

}
