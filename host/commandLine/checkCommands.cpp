#include <string>
#include <utility>
#include <vector>
#include <CLI/CLI.hpp>

#include "CommandLine.h"

namespace OrrelinEngine { namespace Host {

namespace {

void addMaxGrowth(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--max-growth", arguments.maxGrowth,
            "How much longer than its source a translation may be;\n"
            "otherwise 200 % for short texts to 60 % for long ones")
        ->option_text("PERCENT")
        ->check(CLI::Range(0.0, 10000.0));
}

void addRules(CLI::App& command, std::vector<std::string>& rules,
    const char* name, const char* description) {
    command.add_option(name, rules, description)
        ->option_text("RULE,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(ruleFault);
}

}

void addCheckCommands(CLI::App& app, Arguments& arguments) {
    CLI::App& check = addProjectCommand(app, arguments,
        {"check", "Look for faults in the translations",
            "Exits with 3 if there are errors, such as a placeholder that is\n"
            "lost. What is meant as it is can be accepted.",
            "check museum de --skip growth"},
        [](const Arguments& a) {
            return checkTranslations(a.options(), a.checkOptions());
        });
    check
        .add_option("CODE", arguments.codes,
            "Language code; all of the project's if there is none")
        ->option_text("...");
    addRules(check, arguments.onlyRules, "--only", "Apply these rules only");
    addRules(
        check, arguments.skippedRules, "--skip", "Don't apply these rules");
    addMaxGrowth(check, arguments);
    check
        .add_option_function<std::string>(
            "--fail-on",
            [&arguments](const std::string& severity) {
                arguments.failOnWarning = severity == "warning";
            },
            "Exit with 3 if there is an error, which is the default,\n"
            "or also if there is a warning")
        ->option_text("error|warning")
        ->check(CLI::IsMember({"error", "warning"}));
    check
        .add_option("--format", arguments.findingFormat,
            "json for scripts, sarif for code hosts")
        ->option_text("text|json|sarif")
        ->transform(CLI::CheckedTransformer(
            std::vector<std::pair<std::string, FindingFormat>>{
                {"text", FindingFormat::Text}, {"json", FindingFormat::Json},
                {"sarif", FindingFormat::Sarif}}));

    CLI::App& accept = addProjectCommand(app, arguments,
        {"accept", "Let what 'check' finds pass, as it's meant",
            "Until the translation or its source is changed.",
            "accept museum numbers de hours"},
        [](const Arguments& a) {
            return acceptFindings(a.options(),
                {a.rule, a.filter, a.keyList(), a.maxGrowth, a.withdraw});
        });
    accept.add_option("RULE", arguments.rule, "Name of the rule")
        ->required()
        ->check(ruleFault);
    accept.add_option("CODE", arguments.filter, "Language code")->required();
    accept
        .add_option("KEY", arguments.keys,
            "Key of a term; all that the rule finds if there is none")
        ->option_text("...");
    addMaxGrowth(accept, arguments);
    accept.add_flag(
        "--withdraw", arguments.withdraw, "Don't let it pass anymore");
}

}}
