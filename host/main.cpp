#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>
#include <CLI/CLI.hpp>
#include <Corrade/Containers/StringStl.h>

#include "commands/Commands.h"
#include "terminal/Messages.h"

namespace {

using namespace OrrelinEngine;
using namespace OrrelinEngine::Host;

/* Values of the command line */
struct Arguments {
    std::string project;
    std::string components;
    unsigned int maxArchive = 0;
    std::string oldKey, newKey;
    std::string filter;
    std::vector<std::string> codes, keys, choices, files;
    std::string rule;
    std::vector<std::string> onlyRules, skippedRules;
    FindingFormat findingFormat = FindingFormat::Text;
    std::string format = "i18next", output;
    bool json = false;
    bool merge = false;
    bool dryRun = false;
    bool prune = false;
    bool allowEmpty = false;
    bool allowUndescribed = false;
    bool allowOutdated = false;
    bool force = false;
    bool failOnWarning = false;
    bool withdraw = false;
    std::optional<double> failUnder, maxGrowth;
    int result = Success;

    ProjectOptions options() const { return {project, components, maxArchive}; }
    Codes codeList() const { return unique(codes); }
    Codes keyList() const { return unique(keys); }
    CheckOptions checkOptions() const {
        return {codeList(), unique(onlyRules), unique(skippedRules), maxGrowth,
            failOnWarning, findingFormat};
    }
    SourceChoice choice() const {
        SourceChoice out;
        for(const std::string& choice: choices)
            out.add(choice);
        return out;
    }

private:
    /* Each once */
    static Codes unique(const std::vector<std::string>& all) {
        std::set<std::string> known;
        Codes out;
        for(const std::string& value: all)
            if(known.insert(value).second)
                out.emplace_back(value);
        return out;
    }
};

/* Name, description and, for its own help, what else there is to know and an
   example */
struct Description {
    const char* name;
    const char* brief;
    const char* details;
    const char* example;
};

/* The function is called once the whole command line is known to be right */
template<class F> CLI::App& addCommand(CLI::App& app, Arguments& arguments,
    const Description& description, F&& function) {
    CLI::App& out = *app.add_subcommand(description.name, description.brief);
    out.group("Commands");
    out.footer(std::string{description.details} +
        "\n\nExample:\n  orrelin-localize " + description.example);
    out.final_callback(
        [&arguments, function] { arguments.result = function(arguments); });
    return out;
}

template<class F> CLI::App& addProjectCommand(CLI::App& app,
    Arguments& arguments, const Description& description, F&& function) {
    CLI::App& out = addCommand(app, arguments, description, function);
    out.add_option("PROJECT", arguments.project,
           "Project file, or the folder with its project.json")
        ->required();
    out.add_option("--components", arguments.components,
           "Types of script components, in place of the file\n"
           "components.json beside the project")
        ->option_text("FILE");
    out.add_option("--max-archive", arguments.maxArchive,
           "Size that an archive of language files may unpack to;\n"
           "otherwise what its project could need")
        ->option_text("MIB")
        ->check(CLI::Range(1u, 2048u));
    return out;
}

void addJson(CLI::App& command, Arguments& arguments) {
    command.add_flag("--json", arguments.json, "Print JSON, for scripts");
}

void addAllowUndescribed(
    CLI::App& command, Arguments& arguments, const char* description) {
    command.add_flag(
        "--allow-undescribed", arguments.allowUndescribed, description);
}

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

void addChoice(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--take", arguments.choices,
            "Who is right where a source text was changed: file or\n"
            "project; for one text, with a colon and its key")
        ->option_text("SIDE[:KEY] ...")
        ->allow_extra_args(false)
        ->check([](const std::string& value) {
            return SourceChoice{}.add(value)
                ? std::string{}
                : "it's file or project, or one with a colon and a key";
        });
}

void addHandOut(CLI::App& exporting, Arguments& arguments) {
    CLI::Option* const output =
        exporting
            .add_option("-o,--output", arguments.output,
                "A .csv file; a .xlf file, or the folder for one of\n"
                "each language")
            ->option_text("PATH")
            ->check([](const std::string& path) {
                return path.empty() ? "the path is empty" : "";
            });
    CLI::Option* const force =
        exporting.add_flag("--force", arguments.force, "Replace such files");
    exporting
        .add_option("--format", arguments.format,
            "xliff or csv for translation tools and spreadsheets,\n"
            "written to PATH without a change of the project;\n"
            "i18next for the language files, if not given")
        ->option_text("FORMAT")
        ->check(CLI::IsMember({"i18next", "xliff", "csv"}));
    /* Neither means anything without the other */
    exporting.parse_complete_callback([&exporting, &arguments, output, force] {
        const bool isHandOut = arguments.format != "i18next";
        if(isHandOut && !*output)
            throw CLI::RequiredError{
                "--format " + arguments.format + " needs -o with what to write",
                CLI::ExitCodes::RequiredError};
        if(isHandOut) {
            for(const char* const name:
                {"--prune", "--take", "--allow-undescribed"})
                if(*exporting.get_option(name))
                    throw CLI::ExcludesError{name, "--format"};
        } else if(*output || *force)
            throw CLI::RequiresError{
                *output ? "--output" : "--force", "--format"};
    });
}

void addTransferCommands(CLI::App& app, Arguments& arguments) {
    CLI::App& exporting = addProjectCommand(app, arguments,
        {"export", "Write the files for the translators",
            "A file has all terms, with what is translated already; null\n"
            "stands for what isn't. Nothing that was translated is lost: if a\n"
            "file has texts that wouldn't be in it again, none is written, and\n"
            "neither if somebody changed source texts in their file.",
            "export museum de fr"},
        [](const Arguments& a) {
            return a.format == "i18next"
                ? exportFiles(a.options(),
                      {a.codeList(), a.choice(), a.prune, a.allowUndescribed})
                : handOut(a.options(),
                      {a.codeList(),
                          a.format == "csv" ? ExchangeFormat::Csv
                                            : ExchangeFormat::Xliff,
                          Containers::StringView{a.output}, a.force});
        });
    exporting
        .add_option("CODE", arguments.codes,
            "Language code; all of the project's if there is none")
        ->option_text("...");
    exporting.add_flag("--prune", arguments.prune,
        "Drop texts that the project has no place for, such as\n"
        "those of a language or a term that it doesn't have");
    addAllowUndescribed(exporting, arguments,
        "Drop them also if components aren't described, which they\n"
        "may be texts of");

    addChoice(exporting, arguments);
    addHandOut(exporting, arguments);

    CLI::App& importing = addProjectCommand(app, arguments,
        {"import", "Read the translators' files back",
            "Checks the files, adds languages that the project lacks and\n"
            "takes over texts that were changed in the file of its own\n"
            "language. A text that was changed in the project, too, is a\n"
            "conflict, and then nothing is written. Translations stay in the\n"
            "files, from which every command reads them.",
            "import museum --dry-run"},
        [](const Arguments& a) {
            return a.files.empty()
                ? importFiles(a.options(),
                      {a.codeList(), a.choice(), a.allowEmpty, a.dryRun})
                : handIn(a.options(),
                      {{a.files.begin(), a.files.end()}, a.codeList(),
                          a.choice(), a.allowEmpty, a.dryRun});
        });
    importing
        .add_option("CODE", arguments.codes,
            "Language code; all that have files if there is none")
        ->option_text("...");
    addChoice(importing, arguments);
    importing
        .add_option("--from", arguments.files,
            "Take translations from these files instead, which\n"
            "export wrote with --format, and write them into the\n"
            "language files. XLIFF and CSV are told apart by their\n"
            "content. Where a translation was changed in both, --take\n"
            "file takes that of FILE, --take project keeps the other")
        ->option_text("FILE ...")
        ->check([](const std::string& file) {
            return file.empty() ? "the name of a file is empty" : "";
        });
    importing.add_flag("--allow-empty", arguments.allowEmpty,
        "Take empty texts and the word None, which tools write\n"
        "for a missing translation");
    importing.add_flag(
        "--dry-run", arguments.dryRun, "Only show what would change");
}

int report(CLI::App& app, const CLI::ParseError& error) {
    /* Help and version are no errors */
    if(error.get_exit_code() == 0)
        return app.exit(error);
    std::string message = error.what();
    if(app.get_subcommands().empty())
        message = app.remaining().empty()
            ? "a command is required"
            : "there is no command '" + app.remaining().front() + "'";
    fail(message + "; try --help");
    return UsageError;
}

}

int main(int argc, char** argv) {
    CLI::App app{"Translates the texts of a project.", "orrelin-localize"};
    app.get_formatter()->column_width(22);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    for(const char* label: {"TEXT", "REQUIRED"})
        app.get_formatter()->label(label, "");
    app.set_version_flag("--version", "orrelin-localize " HOST_VERSION,
        "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer(
        "Add a language, write its file, have it translated, read it:\n"
        "  orrelin-localize add museum fr\n"
        "  orrelin-localize export museum fr\n"
        "  orrelin-localize import museum\n"
        "  orrelin-localize status museum\n\n"
        "Each command has more help, such as orrelin-localize export --help.\n\n"
        "Exit codes:\n"
        "  0  done\n"
        "  1  the command line is wrong\n"
        "  2  the command failed, or a language file has an error\n"
        "  3  the gate of status --fail-under or of check isn't passed\n"
        "  4  a text was changed in a file, and export or the project has another");

    Arguments arguments;
    addTermCommands(app, arguments);
    addCheckCommands(app, arguments);
    addLanguageCommands(app, arguments);
    addTransferCommands(app, arguments);
    try {
        app.parse(argc, argv);
    } catch(const CLI::ParseError& error) {
        arguments.result = report(app, error);
    }

    if(std::fflush(stdout) != 0 || std::ferror(stdout))
        return fail("can't write to the standard output");
    return arguments.result;
}
