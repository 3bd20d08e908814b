#include "oxd/commands/SelfCommands.h"

#include "oxd/commandline/CommandLine.h"
#include "oxd/doctor/Diagnosis.h"
#include "oxd/system/Results.h"

#include <memory>

namespace oxd {

void AddDoctor(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App& command = *app.add_subcommand("doctor", "Examine this installation and the system that it runs on");
    command.footer(
        "Each line says ok or problem; what helps follows a problem. Exit codes: 0 files can be written and\n"
        "read, 5 they cannot be written, 3 they cannot be read again.");
    command.add_flag("--json", *json, "Print JSON instead of text");
    command.callback([json, &results, &outcome] {
        const Diagnosis diagnosis = Examine(OXD_VERSION, results.IsTerminal());
        outcome = diagnosis.outcome;
        results.Write(*json ? ToJson(diagnosis) : ToText(diagnosis));
    });
}

void AddHelp(CLI::App& app, Results& results)
{
    const auto name = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("help", "Explain a command");
    command.add_option("COMMAND", *name, "What to explain; without it, all commands are listed")->type_name("");
    command.callback(
        [name, &app, &results] { results.Write(name->empty() ? app.help() : FindCommand(app, *name).help("oxd")); });
}

} // namespace oxd
