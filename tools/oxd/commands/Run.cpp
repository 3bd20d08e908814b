#include "oxd/commands/Run.h"

#include "oxd/commands/Commands.h"
#include "oxd/library/Diagnostic.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <algorithm>

namespace oxd {

namespace {

// The file that the command is about, for a message.
std::string NamedFile(const CLI::App& app)
{
    const auto commands = app.get_subcommands();
    const CLI::Option* const file = commands.empty() ? nullptr : commands.front()->get_option_no_throw("FILE");
    return file != nullptr && file->count() > 0 ? file->as<std::string>() : std::string("a file");
}

// How to ask for the help that a wrong command line lacked.
std::string HelpCommand(const CLI::App& app)
{
    const auto commands = app.get_subcommands();
    return "oxd " + (commands.empty() ? std::string() : commands.front()->get_name() + " ") + "--help";
}

// CLI11 takes the arguments last first.
ExitCode Parse(CLI::App& app, std::vector<std::string> arguments, Results& results)
{
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        results.Write(app.help());
    } catch (const CLI::CallForVersion& version) {
        results.Write(std::string(version.what()) + "\n");
    } catch (const CLI::ParseError& error) {
        Complain(std::string(error.what()) + " (see " + HelpCommand(app) + ")");
        return ExitCode::Usage;
    } catch (const Failure&) {
        throw;
    } catch (const std::exception& error) { // the library refused what it does with a sound file
        throw Failure(ExitCode::Damaged, NamedFile(app), diagnostic::Reason(error.what()));
    }
    return ExitCode::Done;
}

ExitCode Execute(std::vector<std::string> arguments, Results& results)
{
    CLI::App app("Shows, corrects and makes .oxd measurement files.", "oxd");
    ExitCode outcome = ExitCode::Done;
    AddCommands(app, results, outcome);
    const ExitCode parsed = Parse(app, std::move(arguments), results);
    results.Close();
    return parsed == ExitCode::Done ? outcome : parsed;
}

} // namespace

int Run(std::vector<std::string> arguments, Results& results)
{
    ExitCode code = ExitCode::Damaged;
    try {
        code = Execute(std::move(arguments), results);
    } catch (const Failure& failure) {
        Complain(failure.what());
        code = failure.Code();
    } catch (const std::exception& error) {
        Complain(error.what());
    }
    return static_cast<int>(code);
}

} // namespace oxd
