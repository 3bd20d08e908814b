#include "Commands.h"

#include "Correct.h"
#include "FileInfo.h"
#include "Results.h"
#include "Sample.h"

#include <algorithm>
#include <memory>

namespace oxd {

namespace {

constexpr const char* exitCodes = "Exit codes: 0 done, 1 no such group or channel, 2 wrong usage, 3 cannot open,\n"
                                  "4 damaged or not an .oxd file, 5 cannot write.";

constexpr const char* jsonShape =
    "Bits are the fewest of 8, 16 and 32 that hold every sample of a channel exactly.\n\n"
    "JSON: {file, version, groups: [{id, logicalId, name, channels: [C or null]}]}, null being an empty slot.\n"
    "C: {name, points, lines, validSamples, unreadableLines, significantBits, values: {min, max},\n"
    "    signalAxis: A, pointAxis: A, lineAxis: A}; significantBits and values are null without samples.\n"
    "A: {name, unit, min, range}; an axis ends at min + range.";

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
    });
}

void AddMakeSample(CLI::App& app)
{
    const auto file = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("make-sample", "Write a sample file with scans and force curves");
    command.add_option("FILE", *file, "File to write; an existing one is replaced")->required();
    command.callback([file] { MakeSample(*file); });
}

std::string DescribeOperators()
{
    std::string text = "Operators:";
    for (const LineOperator& known : lineOperators) {
        const std::string padding(12 - known.name.size(), ' ');
        text.append("\n  ").append(known.name).append(padding).append(known.description);
    }
    return text;
}

CLI::Validator IsOperator()
{
    std::vector<std::string> names;
    std::transform(lineOperators.begin(), lineOperators.end(), std::back_inserter(names),
                   [](const LineOperator& known) { return std::string(known.name); });
    return CLI::IsMember(names);
}

LineOperator FindOperator(const std::string& name)
{
    return *std::find_if(lineOperators.begin(), lineOperators.end(),
                         [&](const LineOperator& known) { return known.name == name; });
}

ExitCode Report(const std::string& file, const UntouchedLines& untouched)
{
    for (const LineTally& tally : {untouched.tooShort, untouched.damaged}) {
        if (tally.Count() > 0) {
            Complain(file + ": " + tally.Sentence("left as before"));
        }
    }
    return untouched.damaged.Count() > 0 ? ExitCode::Damaged : ExitCode::Done;
}

void AddCorrect(CLI::App& app, ExitCode& outcome)
{
    struct Options
    {
        Correction correction;
        std::string lineOperator;
    };
    const auto options = std::make_shared<Options>();
    Correction& correction = options->correction;
    CLI::App& command = *app.add_subcommand("correct", "Correct a channel line by line and save it as another file");
    command.footer(DescribeOperators());
    command.add_option("FILE", correction.file, "File to correct; stays as it is")->required();
    command.add_option("--group", correction.group, "Name of the group")->type_name("NAME")->required();
    command.add_option("--channel", correction.channel, "Index of the channel, or its name")
        ->type_name("INDEX|NAME")
        ->required();
    command.add_option("--op", options->lineOperator, "Operator, see below")
        ->type_name("OP")
        ->required()
        ->check(IsOperator());
    command.add_option("-o,--output", correction.output, "File to write; an existing one is replaced")
        ->type_name("FILE")
        ->required();
    command.callback([options, &outcome] {
        options->correction.lineOperator = FindOperator(options->lineOperator);
        outcome = Report(options->correction.file, Correct(options->correction));
    });
}

} // namespace

void AddCommands(CLI::App& app, Results& results, ExitCode& outcome)
{
    app.allow_windows_style_options(false); // a leading slash is part of a path
    app.set_version_flag("--version", "oxd " OXD_VERSION);
    app.footer(exitCodes);
    app.callback([&app] { // CLI11 has a check of its own, which hides that a command is misspelt
        if (app.get_subcommands().empty()) {
            throw CLI::RequiredError("A command");
        }
    });
    AddInfo(app, results, outcome);
    AddMakeSample(app);
    AddCorrect(app, outcome);
}

} // namespace oxd
