#include "oxd/commands/DoctorCommand.h"

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

} // namespace oxd
