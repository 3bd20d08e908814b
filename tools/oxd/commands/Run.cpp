#include "oxd/commands/Run.h"

#include "oxd/commands/Commands.h"
#include "oxd/library/DataSet.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Interruption.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Platform.h"
#include "oxd/system/Results.h"

#include <boost/nowide/args.hpp>

#include <algorithm>
#include <new>

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
    } catch (const LibraryError& error) { // the library refused what it does with a sound file
        throw Failure(ExitCode::Damaged, NamedFile(app), error.what());
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
    ExitCode code = ExitCode::Internal;
    try {
        code = Execute(std::move(arguments), results);
    } catch (const Failure& failure) {
        code = failure.Code();
        Complain(failure.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        Complain(error.what());
    }
    return static_cast<int>(code);
}

// A message that there is no memory for must not take any.
int RunProcess(int argc, char** argv)
{
    try {
        platform::IgnoreBrokenPipes();
        interruption::Heed();
        const boost::nowide::args inUtf8(argc, argv); // on Windows, where the system's code page lacks most characters
        Results results;
        return Run({argv + std::min(argc, 1), argv + argc}, results);
    } catch (const std::exception&) {
        constexpr int standardError = 2;
        platform::WriteAll(standardError, "oxd: not enough memory\n");
        return static_cast<int>(ExitCode::Internal);
    }
}

} // namespace oxd
