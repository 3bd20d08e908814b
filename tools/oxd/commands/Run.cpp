#include "oxd/commands/Run.h"

#include "oxd/commands/CommandLine.h"
#include "oxd/commands/Commands.h"
#include "oxd/library/Diagnostic.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

namespace oxd {

namespace {

ExitCode Parse(CommandLine& commandLine, Results& results)
{
    try {
        commandLine.Run();
    } catch (const CLI::CallForHelp&) {
        results.Write(commandLine.Help());
    } catch (const CLI::CallForVersion& version) {
        results.Write(std::string(version.what()) + "\n");
    } catch (const CLI::ParseError& error) {
        Complain(commandLine.Explanation(error));
        return ExitCode::Usage;
    } catch (const Failure&) {
        throw;
    } catch (const ReaderGone&) {
        throw;
    } catch (const std::exception& error) { // the library refused what it does with a sound file
        throw Failure(ExitCode::Damaged, commandLine.NamedFile(), diagnostic::Reason(error.what()));
    }
    return ExitCode::Done;
}

ExitCode Execute(std::vector<std::string> arguments, Results& results)
{
    CLI::App app("Shows, corrects and makes .oxd measurement files.", "oxd");
    ExitCode outcome = ExitCode::Done;
    AddCommands(app, results, outcome);
    CommandLine commandLine(app, std::move(arguments));
    try {
        const ExitCode parsed = Parse(commandLine, results);
        results.Close();
        return parsed == ExitCode::Done ? outcome : parsed;
    } catch (const ReaderGone&) {
        return outcome;
    }
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
