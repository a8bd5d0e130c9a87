#include <string>
#include <CLI/CLI.hpp>

#include "CommandLine.h"

namespace OrrelinEngine { namespace Host {

namespace {

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

}}
