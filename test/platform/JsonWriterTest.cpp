#include <string>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/JsonWriter.h>

#include "vectors.h"

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using namespace OrrelinEngine;
using Utility::Json;
using Utility::JsonWriter;

JsonWriter writer() {
    return JsonWriter{
        JsonWriter::Option::Wrap | JsonWriter::Option::TypographicalSpace, 2};
}

TEST(JsonWriter, valuesAndOptions) {
    const struct {
        JsonWriter::Options options;
        std::uint32_t initialIndentation;
        const char* expected;
    } data[]{{{}, 1, "[true,-3,4503599627370495,0.1,1.5,[],{\"a\":1}]"},
        {JsonWriter::Option::TypographicalSpace, 0,
            "[true, -3, 4503599627370495, 0.1, 1.5, [], {\"a\": 1}]"},
        {JsonWriter::Option::Wrap, 0,
            "[\n    true,\n    -3,\n    4503599627370495,\n    0.1,\n    "
            "1.5,\n    [],\n    {\n        \"a\":1\n    }\n]\n"},
        {JsonWriter::Option::Wrap, 1,
            "[\n     true,\n     -3,\n     4503599627370495,\n     0.1,\n     "
            "1.5,\n     [],\n     {\n         \"a\":1\n     }\n ]"}};
    for(const auto& i: data) {
        JsonWriter json{i.options, 4, i.initialIndentation};
        EXPECT_TRUE(json.isEmpty());
        json.beginArray()
            .write(true)
            .write(-3)
            .write((1ull << 52) - 1)
            .write(0.1)
            .write(1.5f)
            .beginArray()
            .endArray()
            .beginObject()
            .writeKey("a")
            .write(1u)
            .endObject()
            .endArray();
        EXPECT_EQ(json.toString(), i.expected);
        EXPECT_EQ(json.size(), json.toString().size());
        EXPECT_TRUE(json.toString().flags() >=
            Containers::StringViewFlag::NullTerminated);
    }
}

TEST(JsonWriter, misuse) {
    EXPECT_DEATH(
        writer().endObject(), "JsonWriter::endObject\\(\\): expected a value");
    EXPECT_DEATH(writer().beginObject().write("a"),
        "JsonWriter::write\\(\\): expected an object key or");
    EXPECT_DEATH(writer().beginArray().writeKey("a"),
        "JsonWriter::writeKey\\(\\): expected an array value or");
    EXPECT_DEATH(
        writer().beginArray().toString(), "JsonWriter::toString\\(\\): ");
    EXPECT_DEATH(writer().write(1).write(2),
        "JsonWriter::write\\(\\): expected document end");
    EXPECT_DEATH(writer().write(1ull << 52),
        "JsonWriter::write\\(\\): .*4503599627370496");
}

#ifdef ORRELIN_STANDINS
TEST(JsonWriter, escaping) {
    const struct {
        Containers::StringView text;
        const char* expected;
    } data[]{
        {""_s, ""},
        {"\0\x01\x1f\x7f"_s, "\\u0000\\u0001\\u001f\x7f"},
        {"seven77\"eight888\\"_s, "seven77\\\"eight888\\\\"},
        {"ends with a \xc3"_s, "ends with a \xef\xbf\xbd"},
        {"\xc3\xbc is \xfc"_s, "\xc3\xbc is \xef\xbf\xbd"},
        {"cut \xf0\x9f\x98 short"_s, "cut \xef\xbf\xbd short"},
        {"\xed\xa0\x80"_s, "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        {"\xf0\x9f\x98\x80"_s, "\xf0\x9f\x98\x80"},
    };
    for(const auto& i: data) {
        JsonWriter json;
        json.write(i.text);
        EXPECT_EQ(json.toString(), '"' + std::string{i.expected} + '"');
        EXPECT_TRUE(Json::fromString(json.toString()));
    }
}

TEST(JsonWriter, roundTrip) {
    /* Every byte at every position relative to a machine word */
    for(int byte = 0; byte != 0x80; ++byte)
        for(std::size_t i = 0; i != 17; ++i) {
            std::string text(17, 'x');
            text[i] = char(byte);

            JsonWriter json;
            json.write(text);
            const Containers::Optional<Json> parsed =
                Json::fromString(json.toString(), Json::Option::ParseStrings);
            ASSERT_TRUE(parsed);
            EXPECT_EQ(parsed->root().asString(), text);
        }
}
#endif

}
