#include "oxd/commands/Commands.h"

#include "oxd/commands/ChannelCommands.h"
#include "oxd/commands/DiffCommand.h"
#include "oxd/commands/FindingCommands.h"
#include "oxd/commands/InfoCommand.h"
#include "oxd/commands/MetaCommands.h"
#include "oxd/commands/ProcessCommand.h"
#include "oxd/commands/ReplayCommand.h"
#include "oxd/commands/SalvageCommand.h"
#include "oxd/commands/SampleCommand.h"
#include "oxd/commands/SelfCommands.h"
#include "oxd/commands/completion/CompletionCommand.h"
#include "oxd/commands/scan/ScanCommand.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

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

void AddDebug(CLI::App& app)
{
    app.add_flag_callback("--debug", ShowDetails,
                          "Show all findings in a file, and all that the library tells of a failure");
}

} // namespace

void AddCommands(CLI::App& app, Results& results, ExitCode& outcome)
{
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.allow_windows_style_options(false); // a leading slash is part of a path
    app.set_version_flag("-V,--version", "oxd " OXD_VERSION);
    app.footer(DescribeExitCodes());
    app.require_subcommand(0, 1); // for the help: the command line is taken apart before this parses it
    AddInfo(app, results, outcome);
    AddValidate(app, results, outcome);
    AddExplain(app, results);
    AddScan(app, results, outcome);
    AddDiff(app, results, outcome);
    AddDoctor(app, results, outcome);
    AddSalvage(app, results);
    AddMakeSample(app);
    AddCorrect(app, results, outcome);
    AddProcess(app, results, outcome);
    AddReplay(app, results, outcome);
    AddExport(app, outcome);
    AddView(app, results);
    AddGet(app, results, outcome);
    AddSet(app, results);
    AddCompletion(app, results);
    AddHelp(app, results);
    AddDebug(app);
    for (CLI::App* const command : app.get_subcommands({})) {
        command->group(command->get_group().empty() ? "" : "Commands"); // those without a group stay hidden
        AddDebug(*command);
    }
}

} // namespace oxd
