#include "oxd/commands/HelpCommand.h"

#include "oxd/commandline/CommandLine.h"
#include "oxd/system/Results.h"

#include <memory>

namespace oxd {

void AddHelp(CLI::App& app, Results& results)
{
    const auto name = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("help", "Explain a command");
    command.add_option("COMMAND", *name, "What to explain; without it, all commands are listed")->type_name("");
    command.callback(
        [name, &app, &results] { results.Write(name->empty() ? app.help() : FindCommand(app, *name).help("oxd")); });
}

} // namespace oxd
