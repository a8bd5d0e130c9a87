#include <cstdio>
#include <string>
#include <CLI/CLI.hpp>

#include "commandLine/CommandLine.h"
#include "terminal/Messages.h"

namespace {

using namespace OrrelinEngine::Host;

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
