#include <string>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/JsonWriter.h>
#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using Utility::Json;
using Utility::JsonWriter;

/* Every byte at every position relative to a machine word */
TEST(JsonWriter, roundTrip) {
    for(int byte = 0; byte != 0x100; ++byte)
        for(std::size_t i = 0; i != 17; ++i) {
            std::string text(17, 'x');
            text[i] = char(byte);

            JsonWriter json{JsonWriter::Option::Wrap |
                    JsonWriter::Option::TypographicalSpace,
                2};
            json.beginObject().writeKey("a").write(text).endObject();
            const Containers::Optional<Json> parsed =
                Json::fromString(json.toString(),
                    Json::Option::ParseLiterals | Json::Option::ParseStrings);
            ASSERT_TRUE(parsed);
            EXPECT_EQ(parsed->root()["a"].asString(), text);
        }
}

}
