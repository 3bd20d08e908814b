#include "oxd/commands/Commands.h"

#include "oxd/commands/ChannelCommands.h"
#include "oxd/commands/MetaCommands.h"
#include "oxd/commands/OutputOptions.h"
#include "oxd/example/Sample.h"
#include "oxd/info/FileInfo.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <memory>

namespace oxd {

namespace {

std::string DescribeExitCodes()
{
    constexpr std::size_t width = 4;
    std::string text = "Exit codes:";
    for (const ExitCodeMeaning& known : exitCodeMeanings) {
        std::string number = std::to_string(static_cast<int>(known.code));
        number.resize(width, ' ');
        text.append("\n  ").append(number).append(known.meaning);
    }
    return text;
}

constexpr const char* jsonShape =
    "Bits are the fewest of 8, 16 and 32 that hold every sample of a channel exactly.\n"
    "Views, processors and sections that the library does not know are not shown.\n\n"
    "JSON: {file, version, groups: [{id, logicalId, name, channels: [C or null]}], info: [I]}, null being an empty "
    "slot.\n"
    "C: {name, points, lines, validSamples, unreadableLines, significantBits, values: {min, max},\n"
    "    signalAxis: A, pointAxis: A, lineAxis: A}; significantBits and values are null without samples.\n"
    "A: {name, unit, min, range}; an axis ends at min + range.\n"
    "I: {name, groups: [I], items: [{name, value}]}, a group of information; \"cut\": true if what is inside is not "
    "shown.";

void AddInfo(CLI::App& app, Results& results, ExitCode& outcome)
{
    struct Options
    {
        std::string file;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand("info", "Show what a file holds")->footer(jsonShape);
    command.add_option("FILE", options->file, "File to show")->type_name("")->required();
    command.add_flag("--json", options->json, "Print JSON instead of a table");
    command.callback([options, &results, &outcome] {
        const FileInfo info = ReadFileInfo(options->file);
        results.Write(options->json ? ToJson(info) : ToTable(info));
        for (const std::string& problem : info.problems) {
            Complain(options->file + ": " + problem);
            outcome = ExitCode::Damaged;
        }
        if (info.cutGroups > 0) {
            Complain(options->file + ": information below level " + std::to_string(shownLevels) + " is not shown");
        }
    });
}

void AddMakeSample(CLI::App& app)
{
    const auto output = std::make_shared<Destination>();
    CLI::App& command = *app.add_subcommand("make-sample", "Write a sample file with scans and force curves");
    command.footer("The file is the same every time, byte for byte.");
    command.add_option("FILE", output->name, "File to write; an existing one is replaced")->type_name("")->required();
    AddNoClobber(command, *output);
    command.callback([output] { MakeSample(*output); });
}

} // namespace

void AddCommands(CLI::App& app, Results& results, ExitCode& outcome)
{
    app.allow_windows_style_options(false); // a leading slash is part of a path
    app.set_version_flag("--version", "oxd " OXD_VERSION);
    app.footer(DescribeExitCodes());
    app.require_subcommand(0, 1); // not several, since each has an outcome of its own
    app.callback([&app] {         // CLI11 has its own check for none, but it would hide that a command is misspelt
        if (app.get_subcommands().empty()) {
            throw CLI::RequiredError("A command");
        }
    });
    AddInfo(app, results, outcome);
    AddMakeSample(app);
    AddCorrect(app, outcome);
    AddExport(app, outcome);
    AddGet(app, results);
    AddSet(app);
}

} // namespace oxd
