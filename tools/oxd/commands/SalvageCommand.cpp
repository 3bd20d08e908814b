#include "oxd/commands/SalvageCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/salvage/SalvageFile.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <memory>

namespace oxd {

namespace {

constexpr const char* salvageHelp =
    "OUT has the groups, channels and information of FILE. Lines whose samples are missing, or may not be their own,\n"
    "are there without samples. The map lists the lines of each channel with what became of them.";

void AddOtherOutput(CLI::App& command, const char* name, std::optional<Destination>& output, const char* description)
{
    const auto set = [&output](const std::string& file) { output = Destination{file}; };
    command.add_option_function<std::string>(name, set, description)->type_name("FILE")->check(IsNotEmpty());
}

} // namespace

void AddSalvage(CLI::App& app, Results& results)
{
    const auto request = std::make_shared<SalvageRequest>();
    CLI::App& command = *app.add_subcommand("salvage", "Save what is certain in a damaged file as another file");
    command.footer(std::string(salvageHelp) + "\n\n" + notInSavedFiles);
    AddInputFile(command, request->file);
    AddOutput(command, request->output).required();
    AddOtherOutput(command, "--map", request->map, "Write the map to a file instead of printing it");
    AddOtherOutput(command, "--png", request->picture, "Write the map as a picture, too");
    AddTrust(command, request->trust);
    command.callback([request, &results] {
        for (auto* const other : {&request->map, &request->picture}) {
            if (*other) {
                (*other)->mayReplace = request->output.mayReplace;
            }
        }
        const SalvageOutcome outcome = SalvageFile(*request);
        for (const std::string& message : outcome.messages) {
            Complain(request->file + ": " + message);
        }
        if (!outcome.map.empty()) {
            results.Write(outcome.map);
        }
    });
}

} // namespace oxd
