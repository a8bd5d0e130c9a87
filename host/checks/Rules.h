#ifndef Orrelin_host_checks_Rules_h
#define Orrelin_host_checks_Rules_h

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

enum class Severity : std::uint8_t { Warning, Error };

/* A row of rules.json, which holds all rules, and the patterns and marks that
   they look for. rules.js applies it in browsers. The views are valid for as
   long as the program runs. */
struct Rule {
    Containers::StringView name;
    Severity severity;
    /* A sentence that says what is wrong */
    Containers::StringView says;
    /* Whether it's about a single text. Others have to be applied by somebody
       who knows all of them. */
    bool isForSingleTexts;
};

/* A translation with its source */
struct CheckedText {
    /* Code of the language */
    Containers::StringView code;
    Containers::StringView key;
    Containers::StringView source;
    Containers::StringView translation;
};

/* What rules have to know beside the text */
struct RuleContext {
    /* Code of the language of the source texts */
    Containers::StringView sourceCode;
    /* In percent, in place of the limits in the table */
    std::optional<double> maxGrowth;
    /* Whether there is a text to nest; all are there without it */
    std::function<bool(Containers::StringView key)> hasKey;
};

/* The table as the file has it */
Containers::StringView rulesTable();

/* All rules, in the order of the table */
const std::vector<Rule>& allRules();

/* The rule of a name, or null */
const Rule* findRule(Containers::StringView name);

/* Whether a language isn't for readers, but for looking at a program with long
   or mirrored texts */
bool isPseudoLanguage(Containers::StringView code);

/* Applies rules to one text after the other */
class RuleSet {
public:
    explicit RuleSet(
        const std::vector<const Rule*>& rules, RuleContext&& context);
    ~RuleSet();

    /* Calls the function with each rule that finds a fault, and what is wrong.
       Linear in the size of the text. */
    typedef std::function<void(const Rule& rule, std::string&& detail)>
        FindingFunction;
    void check(const CheckedText& text, const FindingFunction& function) const;

private:
    struct State;

    std::unique_ptr<State> _state;
};

}}

#endif
