#ifndef Orrelin_host_commandLine_CommandLine_h
#define Orrelin_host_commandLine_CommandLine_h

#include <functional>
#include <string>
#include <vector>

#include "Arguments.h"

namespace CLI {
class App;
}

namespace OrrelinEngine { namespace Host {

/* Name, description and, for its own help, what else there is to know and an
   example */
struct Description {
    const char* name;
    const char* brief;
    const char* details;
    const char* example;
};

/* What a command does, returning the exit code */
typedef std::function<int(const Arguments&)> Command;

/* The command is called once the whole command line is known to be right. The
   arguments have to live as long as the app. */
CLI::App& addCommand(CLI::App& app, Arguments& arguments,
    const Description& description, const Command& command);

/* The same for one whose first argument is a project */
CLI::App& addProjectCommand(CLI::App& app, Arguments& arguments,
    const Description& description, const Command& command);

/* Options that several commands have */
void addJson(CLI::App& command, Arguments& arguments);
void addAllowUndescribed(
    CLI::App& command, Arguments& arguments, const char* description);

/* All commands, a group in each */
void addTermCommands(CLI::App& app, Arguments& arguments);
void addCheckCommands(CLI::App& app, Arguments& arguments);
void addLanguageCommands(CLI::App& app, Arguments& arguments);
void addTransferCommands(CLI::App& app, Arguments& arguments);

}}

#endif
