#include "CommandLine.h"

#include <CLI/CLI.hpp>

namespace OrrelinEngine { namespace Host {

CLI::App& addCommand(CLI::App& app, Arguments& arguments,
    const Description& description, const Command& command) {
    CLI::App& out = *app.add_subcommand(description.name, description.brief);
    out.group("Commands");
    out.footer(std::string{description.details} +
        "\n\nExample:\n  orrelin-localize " + description.example);
    out.final_callback(
        [&arguments, command] { arguments.result = command(arguments); });
    return out;
}

CLI::App& addProjectCommand(CLI::App& app, Arguments& arguments,
    const Description& description, const Command& command) {
    CLI::App& out = addCommand(app, arguments, description, command);
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

}}
