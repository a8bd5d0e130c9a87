#include <cmath>
#include <cstdlib>
#include <string>
#include <CLI/CLI.hpp>

#include "CommandLine.h"

namespace OrrelinEngine { namespace Host {

void addTermCommands(CLI::App& app, Arguments& arguments) {
    CLI::App& terms = addProjectCommand(app, arguments,
        {"terms", "List the texts of a project that can be translated",
            "A term is one text, known by its key in all language files. The\n"
            "path tells where in the project it is.",
            "terms museum"},
        [](const Arguments& a) { return listTerms(a.options(), a.json); });
    addJson(terms, arguments);

    CLI::App& status = addProjectCommand(app, arguments,
        {"status", "Show how much is translated into each language",
            "Counts what is in the language files now. Then lists the types\n"
            "of components that aren't described, each with a line for\n"
            "components.json. It names all parameters that hold text: leave\n"
            "out those that nobody reads, such as names of files.",
            "status museum --fail-under 90"},
        [](const Arguments& a) {
            return showStatus(a.options(), a.json,
                {a.failUnder, a.allowUndescribed, a.allowOutdated});
        });
    addJson(status, arguments);
    status
        .add_option("--fail-under", arguments.failUnder,
            "Exit with 3 if any language is translated to less than N %,\n"
            "or a type of components isn't described")
        ->option_text("N")
        ->check(CLI::Range(0.0, 100.0))
        /* Which a range takes */
        ->check([](const std::string& text) {
            return std::isnan(std::strtod(text.data(), nullptr))
                ? "'" + text + "' isn't a number"
                : std::string{};
        });
    addAllowUndescribed(status, arguments, "Let such types pass");

    status.add_flag("--allow-outdated", arguments.allowOutdated,
        "Let translations pass whose source text changed since");

    CLI::App& missing = addProjectCommand(app, arguments,
        {"missing", "List the texts that wait for a translation",
            "Those without a translation and those whose translation is\n"
            "outdated, by object. Words are counted as Unicode defines them;\n"
            "each ideograph is one.",
            "missing museum de"},
        [](const Arguments& a) {
            return listMissing(a.options(), a.codeList(), a.json);
        });
    missing
        .add_option("CODE", arguments.codes,
            "Language code; all of the project's if there is none")
        ->option_text("...");
    addJson(missing, arguments);

    CLI::App& confirm = addProjectCommand(app, arguments,
        {"confirm", "Say that outdated translations still fit",
            "They count as made from the project's texts as they are now.",
            "confirm museum de welcome"},
        [](const Arguments& a) {
            return confirmTranslations(
                a.options(), Containers::StringView{a.filter}, a.keyList());
        });
    confirm.add_option("CODE", arguments.filter, "Language code")->required();
    confirm
        .add_option("KEY", arguments.keys,
            "Key of a term; all outdated ones if there is none")
        ->option_text("...");

    addProjectCommand(app, arguments,
        {"pin", "Store all generated keys in the project",
            "A generated key is made from the place of a text, so it changes\n"
            "if components are added or removed before it. A stored key stays\n"
            "with its text. One undo in the editor takes them all back.",
            "pin museum"},
        [](const Arguments& a) { return pinKeys(a.options()); });

    CLI::App& rename = addProjectCommand(app, arguments,
        {"rename", "Give a term another key, in the language files too",
            "The key is stored in the project beside the text. Translations\n"
            "are kept.",
            "rename museum floor-plan-text-0 floor-plan.title"},
        [](const Arguments& a) {
            return renameTerm(a.options(), a.oldKey, a.newKey, a.merge);
        });
    rename.add_option("OLD", arguments.oldKey, "Key of the term")->required();
    rename.add_option("NEW", arguments.newKey, "Key that it gets")->required();
    rename.add_flag("--merge", arguments.merge,
        "Allow a key that another term has already; its\n"
        "translations are then those of both");
}

}}
