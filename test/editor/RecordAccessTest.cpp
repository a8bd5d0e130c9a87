#include <string>
#include <gtest/gtest.h>

#include "Project.h"
#include "editor/ProjectFile.h"
#include "editor/ProjectSection.h"

namespace OrrelinEngine { namespace {

using Containers::String;
using Containers::StringView;
using namespace Containers::Literals;

struct RecordAccessTest: testing::Test {
    void parse(const char* json) {
        file.document.Parse(json);
        ASSERT_FALSE(file.document.HasParseError()) << json;
    }

    std::string stored(StringView path) {
        const JsonValue* const value =
            RapidJsonUtils::valueByPointer(file.document, path);
        return value ? jsonText(*value) : "nothing";
    }

    ProjectFile file;
    /* As an editor context has it, without the project's own type */
    const RecordAccess project{file};
};

TEST_F(RecordAccessTest, paths) {
    const auto expect = [](const RecordAccess& access, const char* path) {
        EXPECT_EQ(text(access.path), path);
    };
    const RecordAccess& p = project;
    expect(p, "");
    expect(p["/settings"], "/settings");
    expect(p.subValue("a/b").subValue("c"), "/a/b/c");
    expect(p[p["a"]["b"].path + "_translate"], "/a/b_translate");
    expect(p["list"][2u], "/list/2");
    expect(p["list"][4294967295u], "/list/4294967295");
    expect(p["a"][""], "/a/");
    expect(p["a//b~1c"], "/a//b~1c");
    expect(ProjectSection(file, "objects")["k3"], "/objects/k3");
}

TEST_F(RecordAccessTest, places) {
    parse(R"({"list": ["a", {"b": "c"}], "2": {"0": "digits"}})");
    EXPECT_EQ(text(project["list"][1u]["b"].asString()), "c");
    EXPECT_EQ(text(project["2/0"].asString()), "digits");

    /* No such places */
    for(const StringView key: {"list/2"_s, "list/01"_s, "list/-"_s, "list/b"_s,
            "list/0/b"_s, "absent/deeper"_s, "list/~2"_s, "settings/"_s}) {
        SCOPED_TRACE(text(key));
        EXPECT_FALSE(project[key].hasValue());
        EXPECT_FALSE(project[key].exists());
        EXPECT_TRUE(project[key].readValue().IsNull());
        EXPECT_EQ(project[key].readValueNoDefault(), nullptr);
    }
}

TEST_F(RecordAccessTest, settingsSchema) {
    const ValueAccess settings = project["settings/localization"];
    EXPECT_FALSE(settings.hasValue());
    EXPECT_EQ(settings.readValueNoDefault(), nullptr);
    EXPECT_TRUE(settings.exists());
    EXPECT_EQ(jsonText(settings.readValue()),
        R"({"languagesFolder":"languages","format":"i18next",)"
        R"("enableZipCompression":false})");
    EXPECT_FALSE(settings["defaultLanguage"].exists());

    /* A section that is stored in part has the other defaults still, and a
       stored value counts even if it is null */
    parse(R"({"settings": {"localization":
        {"languagesFolder": "texts", "format": null}}})");
    EXPECT_EQ(text(settings["languagesFolder"].asString()), "texts");
    EXPECT_TRUE(settings["format"].hasValue());
    EXPECT_TRUE(settings["format"].readValue().IsNull());
    EXPECT_FALSE(settings["enableZipCompression"].hasValue());
    EXPECT_TRUE(settings["enableZipCompression"].exists());
}

TEST_F(RecordAccessTest, hostDefaults) {
    JsonDocument defaults;
    defaults.Parse(R"({"settings": {"localization": {"languagesFolder": "host",
        "defaultLanguage": "en"}}, "objects": {"k1": {"components": []}}})");
    file.setDefaults(&defaults);

    /* Asked last */
    const ValueAccess settings = project["settings/localization"];
    EXPECT_EQ(text(settings["languagesFolder"].asString()), "languages");
    ValueAccess language = settings["defaultLanguage"];
    EXPECT_TRUE(language.exists());
    EXPECT_FALSE(language.hasValue());
    EXPECT_EQ(text(language.asString()), "en");
    EXPECT_EQ(text(*project["objects"].keys().begin()), "k1");

    language.setString("de");
    EXPECT_EQ(text(language.asString()), "de");
    EXPECT_EQ(defaults["settings"]["localization"]["defaultLanguage"], "en");

    file.setDefaults(nullptr);
    EXPECT_FALSE(project["objects"].exists());
}

TEST_F(RecordAccessTest, keys) {
    parse(R"({"object": {"z": 1, "a": {}, "": null, "m/n": 2, "~": 3, "~1": 4,
        "é/ü": 5, "0": 6}, "list": [1]})");
    auto member = file.document["object"].MemberBegin();
    std::string keys;
    /* Of a handle each, none of which stays */
    const ValueAccess object = project["object"];
    for(auto i = object.keys().begin(); i != object.keys().end(); ++i) {
        const StringView key = *i;
        EXPECT_EQ(object[*i].readValueNoDefault(), &(member++)->value);
        keys += text(key) + ' ';
    }
    EXPECT_EQ(keys, "z a  m~1n ~0 ~01 é~1ü 0 ");

    for(const char* none: {"list", "object/z", "absent"}) {
        const RecordAccessKeys empty = project[none].keys();
        EXPECT_TRUE(empty.begin() == empty.end()) << none;
    }

    /* RapidJSON's own pointers end at a zero byte */
    parse(R"({"a": 1, "a\u0000/b": 2})");
    EXPECT_EQ(project[*++project.keys().begin()].readValue(), 2);
}

TEST_F(RecordAccessTest, accessorBeforeCreation) {
    ProjectSection languages{file, "languages"};
    const ValueAccess record = languages["de"];
    EXPECT_FALSE(record.hasValue());
    EXPECT_EQ(stored("/languages"), "nothing");

    EXPECT_EQ(text(languages.addResource("de").path), "/languages/de");
    EXPECT_EQ(stored("/languages/de"), "{}");
    EXPECT_TRUE(record.hasValue());
    record["name"].setString("German");
    EXPECT_EQ(stored(""), R"({"languages":{"de":{"name":"German"}}})");

    /* And after it is gone again */
    file.document["languages"].RemoveMember("de");
    EXPECT_FALSE(record.hasValue());
    EXPECT_FALSE(record["name"].exists());
}

TEST_F(RecordAccessTest, addResourceLeavesWhatIsThere) {
    parse(R"({"languages":{"de":null}})");
    ProjectSection languages{file, "languages"};
    EXPECT_TRUE(languages.addResource("de").readValue().IsNull());
    EXPECT_EQ(languages.size(), 1u);
    languages.addResource("a~1b");
    EXPECT_TRUE(file.document["languages"].HasMember("a/b"));
}

TEST_F(RecordAccessTest, setStringCopies) {
    {
        const String text = "a text \0 of more than a few bytes"_s;
        project["copy"].setString(text);
    }
    EXPECT_EQ(
        project["copy"].asString(), "a text \0 of more than a few bytes"_s);

    /* A text of the document itself, to where it is and below it */
    project["copy"].setString(project["copy"].asString().exceptPrefix(2));
    EXPECT_EQ(project["copy"].asString(), "text \0 of more than a few bytes"_s);
    project["copy/below"].setString(project["copy"].asString());
    EXPECT_EQ(
        project["copy/below"].asString(), "text \0 of more than a few bytes"_s);

    project["copy"].setString({});
    EXPECT_EQ(stored(""), R"({"copy":""})");
}

TEST(RecordAccessDeathTest, setStringTooLong) {
    ProjectFile file;
    EXPECT_DEATH(file.setString({"", 0xffffffff}),
        testing::Eq("JsonObject::setString(): Can't store a text of "
                    "4294967295 bytes.\n"));
}

}}
