#include <set>
#include <string>
#include <utility>
#include <vector>
#include <gtest/gtest.h>

#include "Project.h"
#include "editor/EditorSceneData.h"

namespace OrrelinEngine { namespace {

using Containers::StringView;
using namespace Containers::Literals;

/* Keys and paths */
typedef std::set<std::pair<std::string, std::string>> Pairs;

Pairs pairs(const TermPathMap& terms) {
    Pairs out;
    for(const auto& i: terms)
        out.emplace(text(i.first), text(i.second));
    return out;
}

Pairs pairs(const TermMap& strings) {
    Pairs out;
    for(const auto& i: strings)
        out.emplace(text(i.second), text(i.first));
    return out;
}

struct GatherStringsTest: testing::Test {
    GatherStringsTest() {
        const Containers::Pair<StringView, unsigned short> button[]{
            {"label", 16}, {"count", 3}, {"tool/tip", 16}};
        const Containers::Pair<StringView, unsigned short> label[]{
            {"title", 16}};
        session.addScriptType("silent", {});
        session.addScriptType("button", button);
        session.addScriptType("button", label);
        session.addScriptType("text", label);
        session.addScriptType("a/b", label);
    }

    void gather(const std::string& json) {
        ASSERT_TRUE(session.parse(json)) << json;
        LocalizationTools::gatherStrings(session.editor(), strings);
    }

    const TermPathMap& terms() { return session.localization().terms; }

    EditorSession session;
    TermMap strings;
};

/* The terms, and what the caller gets beyond the same pairs */
const struct {
    const char *name, *json;
    Pairs terms;
    Pairs shared = {};
} Documents[]{
    {"nothing in it", R"({"settings": {"project": {}}, "objects": {"a": {}}})",
        {}},
    {"project name with a key",
        R"({"settings": {"project": {"name": "", "name_term": "title"}}})",
        {{"title", "/settings/project/name"}}},
    {"key without a project name",
        R"({"settings": {"project": {"name_term": "title"}}})", {}},
    {"project and objects",
        R"({"settings": {"project": {"name": "Demo"}}, "objects": {"a1":
            {"components": [
                {"type": "text", "text": {"text": "Hello"}},
                {"type": "button", "button": {"label": "OK",
                    "label_term": "ok-label", "count": 2}}]}}})",
        {{"a1-js-1-tool/tip", "/objects/a1/components/1/button/tool~1tip"},
            {"a1-text-0", "/objects/a1/components/0/text/text"},
            {"ok-label", "/objects/a1/components/1/button/label"},
            {"projectName", "/settings/project/name"}}},
    {"no value is needed",
        R"({"objects": {"k3": {"components": [{"type": "text"},
            {"type": "button", "button": 1}, {"type": "text", "text": []}]}}})",
        {{"k3-js-1-label", "/objects/k3/components/1/button/label"},
            {"k3-js-1-tool/tip", "/objects/k3/components/1/button/tool~1tip"},
            {"k3-text-0", "/objects/k3/components/0/text/text"},
            {"k3-text-2", "/objects/k3/components/2/text/text"}}},
    {"other components",
        R"({"objects": {"a": {"components": [{"type": "mesh"},
            {"type": "Text"}, {"type": "text "}, {"type": 1}, {}, null,
            "text", {"type": "silent"}]}}})",
        {}},
    {"components that are none",
        R"({"objects": {"a": {"components": {"0": {"type": "text"}}},
            "b": {"components": 2}, "c": {"components": []}, "d": {}, "e": 1,
            "f": {"components": null}}})",
        {}},
    {"first claim of a key",
        R"({"objects": {
            "z": {"components": [
                {"type": "text", "text": {"text_term": "greeting"}},
                {"type": "text", "text": {"text_term": "greeting"}}]},
            "a": {"components": [
                {"type": "text", "text": {"text_term": "greeting"}},
                {"type": "text", "text": {"text_term": "z-text-7"}}]}}})",
        {{"greeting", "/objects/z/components/0/text/text"},
            {"z-text-7", "/objects/a/components/1/text/text"}},
        {{"greeting", "/objects/a/components/0/text/text"},
            {"greeting", "/objects/z/components/1/text/text"}}},
    {"keys are taken as they are",
        R"({"objects": {"a": {"components": [
            {"type": "text", "text": {"text_term": ""}},
            {"type": "text", "text": {"text_term": " \n/é"}},
            {"type": "text", "text": {"text_term": 5}},
            {"type": "button", "button": {"tool/tip_term": "tip"}}]}}})",
        {{"", "/objects/a/components/0/text/text"},
            {" \n/é", "/objects/a/components/1/text/text"},
            {"a-js-3-label", "/objects/a/components/3/button/label"},
            {"tip", "/objects/a/components/3/button/tool~1tip"}},
        {{"", "/objects/a/components/2/text/text"}}},
    {"names that are escaped in paths",
        R"({"objects": {
            "a/b~": {"components": [
                {"type": "text", "text": {"text_term": "found"}},
                {"type": "text"},
                {"type": "a/b", "a/b": {"title_term": "title"}},
                {"type": "a/b"}]},
            "": {"components": [{"type": "text"}]}}})",
        {{"-text-0", "/objects//components/0/text/text"},
            {"a~1b~0-js-3-title", "/objects/a~1b~0/components/3/a~1b/title"},
            {"a~1b~0-text-1", "/objects/a~1b~0/components/1/text/text"},
            {"found", "/objects/a~1b~0/components/0/text/text"},
            {"title", "/objects/a~1b~0/components/2/a~1b/title"}}},
    {"the first one of a name counts",
        R"({"objects": {
            "a": {"components": [{"type": "text", "type": "button",
                "text": {"text_term": "1", "text_term": "2"},
                "text": {"text_term": "3"}}], "components": []},
            "a": {"components": [{"type": "text"}, {"type": "text"}]}}})",
        {{"1", "/objects/a/components/0/text/text"}}},
};

TEST_F(GatherStringsTest, documents) {
    for(const auto& data: Documents) {
        SCOPED_TRACE(data.name);
        gather(data.json);
        EXPECT_EQ(pairs(terms()), data.terms);
        Pairs expected = data.terms;
        expected.insert(data.shared.begin(), data.shared.end());
        EXPECT_EQ(pairs(strings), expected);
    }
}

/* A third has keys of its own, given twice, and one a member named alike */
TEST_F(GatherStringsTest, largeComponent) {
    std::vector<std::string> names(64000);
    std::vector<Containers::Pair<StringView, unsigned short>> parameters;
    std::string json = R"({"objects": {"a": {"components": [{"type": "form",
        "form": {"48162_terms": "")";
    Pairs expected;
    for(std::size_t i = 0; i != names.size(); ++i) {
        names[i] = std::to_string(i * 7919 % names.size());
        parameters.emplace_back(names[i], Data::StringParamType);
        if(i % 3 == 0)
            for(const char* const key: {"chosen-", "second-"})
                json +=
                    ", \"" + names[i] + "_term\": \"" + key + names[i] + '"';
        expected.emplace((i % 3 ? "a-js-0-" : "chosen-") + names[i],
            "/objects/a/components/0/form/" + names[i]);
    }
    session.addScriptType(
        "form", Containers::arrayView(parameters.data(), parameters.size()));
    gather(json + "}}]}}}");
    EXPECT_TRUE(pairs(terms()) == expected);
    EXPECT_TRUE(pairs(strings) == expected);
}

TEST_F(GatherStringsTest, gatheringAgain) {
    gather(R"({"settings": {"project": {"name": "Demo"}}})");
    session.localization().terms.emplace("gone", "/objects/gone");
    session.localization().translations["de"]["gone"] = Containers::NullOpt;
    strings.emplace("/objects/gone", "gone");
    LocalizationTools::gatherStrings(session.editor(), strings);
    const Pairs expected{{"projectName", "/settings/project/name"}};
    EXPECT_EQ(pairs(terms()), expected);
    EXPECT_EQ(pairs(strings), expected);
    EXPECT_EQ(session.localization().translations.at("de").size(), 1u);
}

TEST_F(GatherStringsTest, innerOperationsAdd) {
    ASSERT_TRUE(session.parse(R"({"objects": {
        "a": {"components": [{"type": "text"}, {"type": "button"}]},
        "b": {"components": [{"type": "text"}], "type": "text"}}})"));
    strings.emplace("/objects/a/components/0/text/text", "kept");
    session.localization().terms.emplace("a-js-1-label", "/kept");

    for(int i = 0; i != 2; ++i) {
        LocalizationTools::gatherObjectStrings(session.editor(), "a", strings);
        EXPECT_EQ(pairs(terms()),
            (Pairs{{"a-js-1-label", "/kept"},
                {"a-js-1-tool/tip", "/objects/a/components/1/button/tool~1tip"},
                {"a-text-0", "/objects/a/components/0/text/text"}}));
        EXPECT_EQ(pairs(strings),
            (Pairs{{"kept", "/objects/a/components/0/text/text"},
                {"a-js-1-label", "/objects/a/components/1/button/label"},
                {"a-js-1-tool/tip",
                    "/objects/a/components/1/button/tool~1tip"}}));
    }
    LocalizationTools::gatherObjectStrings(session.editor(), "absent", strings);

    /* Too few parts name no component */
    const StringView parts[]{""_s, "objects"_s, "b"_s, "components"_s, "0"_s};
    for(std::size_t count = 0; count <= 5; ++count) {
        EXPECT_EQ(terms().size(), 3u);
        LocalizationTools::gatherComponentStrings(session.editor(),
            Containers::arrayView(parts).prefix(count), strings);
    }
    EXPECT_EQ(
        text(terms().at("b-text-0")), "/objects/b/components/0/text/text");
}

}}
