#include <string>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Json.h>

#include "vectors.h"

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using namespace OrrelinEngine;
using Utility::Json;
using Utility::JsonToken;

constexpr const char* TypeNames[]{
    "object", "array", "null", "bool", "number", "string"};

Containers::Optional<Json> parse(
    const Containers::StringView text, Containers::String& error) {
    Utility::Error redirectError{&error};
    return Json::fromString(
        text, Json::Option::ParseLiterals | Json::Option::ParseStrings);
}

TEST(Json, vectors) {
    for(const rapidjson::Value& i: vectors("jsonRead").GetArray()) {
        const bool nested = i.HasMember("nestedArrays");
        const std::size_t depth = nested ? i["nestedArrays"].GetUint() : 0;
        const std::string text = nested
            ? std::string(depth, '[') + std::string(depth, ']')
            : std::string{stringView(i["text"])};
        SCOPED_TRACE(text.substr(0, 100));

        Containers::String error;
        const Containers::Optional<Json> json = parse(text, error);
        ASSERT_EQ(bool(json), i["accepted"].GetBool()) << error.data();
        EXPECT_EQ(error.isEmpty(), bool(json));
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

TEST(Json, access) {
    Containers::String error;
    Containers::Optional<Json> json =
        parse(R"({"a": {"b\n": [true, [{}]]}, "c\\": "x\"y", "": "\u00fc"})"_s,
            error);
    ASSERT_TRUE(json);

    /* Tokens don't depend on the place of the instance */
    const JsonToken root = json->root();
    const Json moved = *std::move(json);

    EXPECT_TRUE(root["a"].find("b\n"));
    EXPECT_EQ(root["c\\"].asString(), "x\"y"_s);
    EXPECT_EQ(root.find("")->asString(), "ü"_s);
    EXPECT_FALSE(root.find("b"));
    EXPECT_DEATH(root["d"], "JsonToken::operator\\[\\]\\(\\): key d not found");
    EXPECT_DEATH(root["a"].asString(), "JsonToken::asString\\(\\): ");
}

/* Texts, UTF-8 and not, and all that begins like a number */
TEST(Json, accepted) {
    const std::pair<Containers::StringView, Containers::StringView> data[]{
        {"\"\\ud83d\\ude00\\\\ud83d\""_s, "\xed\xa0\xbd\xed\xb8\x80\\ud83d"_s},
        {"\"\\ude00\\uD7FF\\uE000\""_s,
            "\xed\xb8\x80\xed\x9f\xbf\xee\x80\x80"_s},
        {"\"\x7fü\x80 \xed\xa0\x80\xff\xf0\x9f\""_s,
            "\x7fü\x80 \xed\xa0\x80\xff\xf0\x9f"_s},
        {"-1.0E-999"_s, {}}, {"-"_s, {}}, {"0x\xff\"\0{:"_s, {}}};
    for(const auto& i: data) {
        Containers::String error;
        const Containers::Optional<Json> json =
            parse("{\"a\":" + i.first + "\t}", error);
        ASSERT_TRUE(json) << error.data();
        const JsonToken value = json->root()["a"];
        if(i.second)
            EXPECT_EQ(value.asString(), i.second);
        else
            EXPECT_EQ(value.type(), JsonToken::Type::Number);
    }
}

TEST(Json, refused) {
    for(const Containers::StringView i: {
#ifdef ORRELIN_STANDINS
            /* Corrade's own parser lets these pass */
            "\"a\nb\""_s, "\"a\x1f\""_s, "\"a\0b\""_s,
#endif
            "\"\\ud83d\\ude0\""_s, "\"\\u+12f\""_s, "\"\\u-12f\""_s,
            "\"\\u12"_s, "{}\0"_s, "{}\0x"_s, "\0{}"_s, "+1"_s, ".5"_s,
            "[1 2]"_s}) {
        SCOPED_TRACE(std::string{i});
        Containers::String error;
        EXPECT_FALSE(parse(i, error));
        EXPECT_FALSE(error.isEmpty());
    }
}

}
