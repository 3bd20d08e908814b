#include "oxd/commands/scan/ScanCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/files/FilePath.h"
#include "oxd/scan/Scan.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <thread>

namespace oxd {

namespace {

constexpr const char* scanHelp =
    "Prints a line of JSON for each file whose name ends with .oxd, sorted by name within a folder. Only headers are\n"
    "read. A file that cannot be read, or is no .oxd file, is a line with the reason: {path, size, modified, error}.\n"
    "The exit code is 0 also then, and 3 if a DIR does not exist.";

constexpr unsigned mostThreads = 256;

struct ScanOptions
{
    std::vector<std::string> folders;
    std::string list; // a file with more of them
    std::string since;
    unsigned threads = 0;
    bool all = false;
};

// One in each line, which may end as on Windows.
void AddListed(std::istream& lines, std::vector<std::filesystem::path>& roots)
{
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (!line.empty()) {
            roots.push_back(ToPath(line));
        }
    }
}

void AddList(const std::string& list, std::vector<std::filesystem::path>& roots)
{
    if (list == "-") {
        return AddListed(std::cin, roots);
    }
    std::ifstream lines(ToPath(list), std::ios::binary);
    if (!lines) {
        throw Failure(ExitCode::CannotOpen, list, "cannot be opened");
    }
    AddListed(lines, roots);
}

ExitCode RequireRoots(const std::vector<std::string>& folders)
{
    ExitCode code = ExitCode::Done;
    for (const std::string& folder : folders) {
        std::error_code error;
        if (!std::filesystem::exists(ToPath(folder), error)) {
            Complain(folder + ": " + (error ? error : make_error_code(std::errc::no_such_file_or_directory)).message());
            code = ExitCode::CannotOpen;
        }
    }
    return code;
}

void RunScan(const ScanOptions& options, Results& results, ExitCode& outcome)
{
    if (options.folders.empty() && options.list.empty()) {
        throw Failure(ExitCode::Usage, "scan", "DIR is required (see oxd scan --help)");
    }
    ScanRequest request;
    request.choice = options.all ? FileChoice::All : FileChoice::ByName;
    if (!options.since.empty()) {
        request.since = ParseTime(options.since);
    }
    request.threads = options.threads > 0 ? options.threads : std::max(1U, std::thread::hardware_concurrency());
    outcome = RequireRoots(options.folders);
    for (const std::string& folder : options.folders) {
        request.roots.push_back(ToPath(folder));
    }
    if (!options.list.empty()) {
        AddList(options.list, request.roots);
    }
    Scan(request, results);
}

} // namespace

void AddScan(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App& command = *app.add_subcommand("scan", "Tell what all files in folders hold")->footer(scanHelp);
    command.add_option("DIR", options->folders, "Folders to walk, and files")->type_name("")->check(IsNotEmpty());
    command.add_option("--files-from", options->list, "File with more of these, one in each line; - is the input")
        ->type_name("FILE")
        ->check(IsNotEmpty());
    command.add_option("--since", options->since, "Only files changed since then, such as 2026-11-22; in UTC")
        ->type_name("TIME")
        ->check(IsNotEmpty());
    command.add_option("--jobs", options->threads, "Threads that read; as many as there are processors if not given")
        ->type_name("N")
        ->check(CLI::Range(1U, mostThreads));
    command.add_flag("--all", options->all, "All files, whatever their names");
    command.callback([options, &results, &outcome] { RunScan(*options, results, outcome); });
}

} // namespace oxd
