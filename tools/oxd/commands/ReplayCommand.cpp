#include "oxd/commands/ReplayCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/edit/Replay.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/system/Results.h"

#include <memory>

namespace oxd {

namespace {

constexpr const char* replayHelp =
    "What oxd correct and oxd process recorded in FILE is done once more with ORIGINAL, and\n"
    "the outcome is compared with FILE byte for byte. Neither is changed. Exit codes: 0 the same,\n"
    "1 different, 4 FILE has no provenance.";

struct ReplayOptions
{
    std::string file;
    std::string original;
    bool trust = false;
};

} // namespace

void AddReplay(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<ReplayOptions>();
    CLI::App& command =
        *app.add_subcommand("replay", "Prove how a corrected or processed file was made")->footer(replayHelp);
    AddInputFile(command, options->file);
    command.add_option("ORIGINAL", options->original, "File that it was made from; stays as it is")
        ->type_name("")
        ->required()
        ->check(IsNotEmpty());
    AddTrust(command, options->trust);
    command.callback([options, &results, &outcome] {
        const inspect::Inspection made = InspectAloud(options->file);
        const ReplayOutcome replayed = Replay(made, RequireCertain(options->original, options->trust));
        outcome = replayed.isSame ? ExitCode::Done : ExitCode::No;
        results.WriteLines(replayed.sentence + "\n");
    });
}

} // namespace oxd
