#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <Corrade/Containers/StringStl.h>

#include "TemporaryFolder.h"
#include "checks/Rules.h"

namespace OrrelinEngine { namespace Host { namespace {

typedef std::vector<std::string> Strings;

std::vector<const Rule*> singleTextRules() {
    std::vector<const Rule*> out;
    for(const Rule& rule: allRules())
        out.push_back(&rule);
    return out;
}

class RulesTest: public testing::Test {
protected:
    explicit RulesTest() {
        const std::string content =
            TemporaryFolder::readFile(TEST_DATA "/checks.json");
        cases.Parse(content.data(), content.size());
    }

    /* Texts are in the table, from an index on in a row */
    void expect(const std::string& code, const std::string& key,
        const std::string& source, const std::string& translation,
        const rapidjson::Value& row, unsigned begin) const {
        Strings expected, found;
        for(unsigned i = begin; i < row.Size(); ++i)
            expected.emplace_back(row[i].GetString());
        _rules.check({code, key, source, translation},
            [&](const Rule& rule, std::string&& detail) {
                const bool isNameOnly = found.size() < expected.size() &&
                    expected[found.size()].find(':') == std::string::npos;
                found.push_back(
                    std::string{rule.name} + (isNameOnly ? "" : ": " + detail));
            });
        EXPECT_EQ(found, expected) << code << ": " << translation;
    }

    rapidjson::Document cases;

private:
    RuleSet _rules{singleTextRules(),
        {"en", {}, [](Containers::StringView key) { return key == "hours"; }}};
};

/* The same as test/checks/check.cjs does with JavaScript's rules */
TEST_F(RulesTest, TextsInTenLanguages) {
    const std::string source = cases["source"].GetString();
    ASSERT_GE(cases["translations"].MemberCount(), 10u);
    for(const auto& language: cases["translations"].GetObject()) {
        const std::string code = language.name.GetString();
        const std::string good = language.value.GetString();
        expect(code, "key", source, good,
            rapidjson::Value{rapidjson::kArrayType}, 0);
        for(const rapidjson::Value& fault: cases["faults"].GetArray()) {
            const auto text = [&](const char* name) {
                return std::string{
                    fault.HasMember(name) ? fault[name].GetString() : ""};
            };
            std::string bad = good;
            const std::string replaced = text("replace");
            bad.replace(bad.find(replaced), replaced.size(), text("by"));
            expect(code, "key", source,
                fault.HasMember("isSource")
                    ? source
                    : text("before") + bad + text("after"),
                fault["finds"], 0);
        }
    }
    for(const rapidjson::Value& row: cases["pairs"].GetArray())
        expect(row[0].GetString(), "key", row[1].GetString(),
            row[2].GetString(), row, 3);
    for(const rapidjson::Value& row: cases["plurals"].GetArray())
        expect("ru", row[0].GetString(), row[1].GetString(), row[2].GetString(),
            row, 3);
}

TEST_F(RulesTest, MaxGrowth) {
    const RuleSet rules{{findRule("growth")}, {"en", 10.0, {}}};
    int count = 0;
    for(const char* const translation: {"0123456789a", "0123456789 a"})
        rules.check({"de", "", "0123456789", translation},
            [&](const Rule&, std::string&&) { ++count; });
    EXPECT_EQ(count, 1);
}

}}}
