#include "Rules.h"

#include <algorithm>
#include <utility>
#include <Corrade/Utility/Assert.h>

#include "RuleKinds.h"
#include "embedded.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

Containers::StringView view(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

const rapidjson::Document& table() {
    static const rapidjson::Document out = [] {
        rapidjson::Document json;
        const Containers::StringView content = rulesTable();
        json.Parse(content.data(), content.size());
        CORRADE_ASSERT(!json.HasParseError(), "rules.json isn't JSON", json);
        return json;
    }();
    return out;
}

}

Containers::StringView rulesTable() {
    return {Embedded::Rules, sizeof(Embedded::Rules) - 1};
}

const std::vector<Rule>& allRules() {
    static const std::vector<Rule> out = [] {
        std::vector<Rule> rules;
        for(const rapidjson::Value& row: table()["rules"].GetArray())
            rules.push_back({view(row["name"]),
                view(row["severity"]) == "error"_s ? Severity::Error
                                                   : Severity::Warning,
                view(row["says"]), view(row["kind"]) != "project"_s});
        return rules;
    }();
    return out;
}

const Rule* findRule(Containers::StringView name) {
    const std::vector<Rule>& all = allRules();
    const auto found = std::find_if(all.begin(), all.end(),
        [&](const Rule& rule) { return rule.name == name; });
    return found == all.end() ? nullptr : &*found;
}

bool isPseudoLanguage(Containers::StringView code) {
    const auto all = table()["pseudoLanguages"].GetArray();
    return std::any_of(all.begin(), all.end(),
        [&](const rapidjson::Value& other) { return view(other) == code; });
}

struct RuleSet::State {
    RuleContext context;
    std::vector<std::pair<const Rule*, std::unique_ptr<RuleKind>>> kinds;
};

RuleSet::RuleSet(const std::vector<const Rule*>& rules, RuleContext&& context):
    _state{std::make_unique<State>()} {
    _state->context = std::move(context);
    for(const Rule* const rule: rules)
        if(rule->isForSingleTexts)
            _state->kinds.emplace_back(rule,
                makeRuleKind(table()["rules"][rapidjson::SizeType(
                                 rule - allRules().data())],
                    _state->context));
}

RuleSet::~RuleSet() = default;

void RuleSet::check(
    const CheckedText& text, const FindingFunction& function) const {
    const ScannedText scanned{text};
    for(const auto& kind: _state->kinds) {
        std::string detail = kind.second->find(scanned);
        if(!detail.empty())
            function(*kind.first, std::move(detail));
    }
}

}}
