#include <string>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/JsonWriter.h>

#include "vectors.h"

namespace OrrelinEngine { namespace {

using Utility::Json;
using Utility::JsonToken;
using Utility::JsonWriter;
using namespace Containers::Literals;

constexpr const char* TypeNames[]{
    "object", "array", "null", "bool", "number", "string"};

Containers::Optional<Json> parse(const Containers::StringView text) {
    Containers::String error;
    Containers::Optional<Json> json;
    {
        Utility::Error redirectError{&error};
        json = Json::fromString(
            text, Json::Option::ParseLiterals | Json::Option::ParseStrings);
    }
    EXPECT_EQ(error.isEmpty(), bool(json)) << error.data();
    return json;
}

TEST(JsonTest, vectors) {
    for(const rapidjson::Value& i: vectors("jsonRead").GetArray()) {
        const bool nested = i.HasMember("nestedArrays");
        const std::size_t depth = nested ? i["nestedArrays"].GetUint() : 0;
        const std::string text = nested
            ? std::string(depth, '[') + std::string(depth, ']')
            : std::string{stringView(i["text"])};
        SCOPED_TRACE(text.substr(0, 100));

        const Containers::Optional<Json> json = parse(text);
        ASSERT_EQ(bool(json), i["accepted"].GetBool());
        if(!i.HasMember("members"))
            continue;
        std::size_t count = 0;
        for(const Utility::JsonObjectItem item: json->root().asObject()) {
            ASSERT_LT(count, i["members"].Size());
            const rapidjson::Value& expected = i["members"][count++];
            EXPECT_EQ(item.key(), stringView(expected[0]));
            EXPECT_STREQ(
                TypeNames[int(item.value().type())], expected[1].GetString());
            if(expected.Size() == 3) {
                EXPECT_EQ(item.value().asString(), stringView(expected[2]));
            }
        }
        EXPECT_EQ(count, i["members"].Size());
    }
}

/* Texts, UTF-8 and not, and all that begins like a number */
TEST(JsonTest, accepted) {
    const std::pair<Containers::StringView, Containers::StringView> data[]{
        {"\"\\ud83d\\ude00\\\\ud83d\""_s, "\xed\xa0\xbd\xed\xb8\x80\\ud83d"_s},
        {"\"\\u00fc\\uD7FF\\uE000\""_s, "ü\xed\x9f\xbf\xee\x80\x80"_s},
        {"\"\x7fü\x80 \xed\xa0\x80\xff\xf0\x9f\""_s,
            "\x7fü\x80 \xed\xa0\x80\xff\xf0\x9f"_s},
        {"-1.0E-999"_s, {}}, {"-"_s, {}}, {"0x\xff\"\0{:"_s, {}}};
    for(const auto& i: data) {
        Containers::Optional<Json> json =
            parse("{\"b\":[{}],\"a\\n\":" + i.first + "\t}");
        ASSERT_TRUE(json);
        /* Tokens don't depend on the place of the instance */
        const JsonToken root = json->root();
        const Json moved = *std::move(json);
        EXPECT_FALSE(root.find("a"));
        if(i.second)
            EXPECT_EQ(root["a\n"].asString(), i.second);
        else
            EXPECT_EQ(root["a\n"].type(), JsonToken::Type::Number);
    }
}

TEST(JsonTest, refused) {
    for(const Containers::StringView i: {
#ifdef ORRELIN_STANDINS
            /* Corrade's own parser lets these pass */
            "\"a\nb\""_s, "\"a\x1f\""_s, "\"a\0b\""_s,
#endif
            "\"\\ud83d\\ude0\""_s, "\"\\u+12f\""_s, "\"\\u-12f\""_s,
            "\"\\u12"_s, "{}\0"_s, "{}\0x"_s, "\0{}"_s, "+1"_s, ".5"_s,
            "[1 2]"_s})
        EXPECT_FALSE(parse(i)) << std::string{i};
}

/* Every byte at every position relative to a machine word */
TEST(JsonTest, writerRoundTrip) {
    for(int byte = 0; byte != 0x100; ++byte)
        for(std::size_t i = 0; i != 17; ++i) {
            std::string text(17, 'x');
            text[i] = char(byte);
            JsonWriter json{JsonWriter::Option::Wrap |
                    JsonWriter::Option::TypographicalSpace,
                2};
            json.beginObject().writeKey("a").write(text).endObject();
            const Containers::Optional<Json> parsed = parse(json.toString());
            ASSERT_TRUE(parsed);
            EXPECT_EQ(parsed->root()["a"].asString(), text);
        }
}

}}
