#include <CLI/CLI.hpp>

#include "CommandLine.h"

namespace OrrelinEngine { namespace Host {

void addLanguageCommands(CLI::App& app, Arguments& arguments) {
    CLI::App& languages = addCommand(app, arguments,
        {"languages", "List the languages that there are, or search for some",
            "Their codes are what other commands take.",
            "languages portuguese"},
        [](const Arguments& a) { return listLanguages(a.filter, a.json); });
    languages.add_option(
        "FILTER", arguments.filter, "Part of a code or of an English name");
    addJson(languages, arguments);

    CLI::App& add = addProjectCommand(app, arguments,
        {"add", "Add languages to a project",
            "A project needs the language of its own texts first. It's added\n"
            "if the project names it; otherwise the first CODE becomes it.",
            "add museum fr pt-BR"},
        [](const Arguments& a) {
            return addLanguages(a.options(), a.codeList());
        });
    add.add_option("CODE", arguments.codes,
           "Language code, such as fr; 'languages' lists them")
        ->required()
        ->option_text("...");

    CLI::App& remove = addProjectCommand(app, arguments,
        {"remove", "Remove languages and delete their files",
            "The translations are gone then, unless you have a copy of the\n"
            "file. An archive of language files stays as it is.",
            "remove museum fr"},
        [](const Arguments& a) {
            return removeLanguages(a.options(), a.codeList());
        });
    remove.add_option("CODE", arguments.codes, "Language code")
        ->required()
        ->option_text("...");
}

}}
