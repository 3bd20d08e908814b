#include "oxd/commands/Run.h"

#include "oxd/commandline/CommandLine.h"
#include "oxd/commands/Commands.h"
#include "oxd/files/Interruption.h"
#include "oxd/library/DataSet.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Platform.h"
#include "oxd/system/Results.h"

#include <boost/nowide/args.hpp>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

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
    } catch (const LibraryError& error) { // the library refused what it does with a sound file
        throw Failure(ExitCode::Damaged, commandLine.NamedFile(), error.what());
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

// Without taking any memory.
void ComplainAtOnce(std::string_view message)
{
    constexpr int standardError = 2;
    platform::WriteAll(standardError, message);
}

constexpr std::string_view noMemory = "oxd: not enough memory\n";

std::string_view ReasonToTerminate()
{
    try {
        if (const auto exception = std::current_exception()) {
            std::rethrow_exception(exception);
        }
    } catch (const std::bad_alloc&) {
        return noMemory;
    } catch (...) { // NOLINT(bugprone-empty-catch): whatever it is, it is told below
    }
    return "oxd: internal error\n";
}

// Destructors that take memory, as those of JSON documents do, end here when there is none.
[[noreturn]] void Terminate()
{
    ComplainAtOnce(ReasonToTerminate());
    interruption::Abandon();
    std::_Exit(static_cast<int>(ExitCode::Internal));
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

int RunProcess(int argc, char** argv)
{
    std::set_terminate(Terminate);
    try {
        platform::IgnoreBrokenPipes();
        interruption::Heed();
        const boost::nowide::args inUtf8(argc, argv); // on Windows, where the system's code page lacks most characters
        Results results;
        return Run({argv + std::min(argc, 1), argv + argc}, results);
    } catch (const std::exception&) {
        ComplainAtOnce(noMemory);
        return static_cast<int>(ExitCode::Internal);
    }
}

} // namespace oxd
