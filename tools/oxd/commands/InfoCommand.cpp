#include "oxd/commands/InfoCommand.h"

#include "oxd/commands/CommonOptions.h"
#include "oxd/commands/EachFile.h"
#include "oxd/info/FileInfo.h"

#include <memory>
#include <utility>

namespace oxd {

namespace {

constexpr const char* jsonShape =
    "Bits are the fewest of 8, 16 and 32 that hold every sample of a channel exactly.\n"
    "Views, processors and sections that the library does not know are not shown.\n\n"
    "JSON: {file, version, groups: [{id, logicalId, name, channels: [C or null]}], info: [I]}, null being an empty "
    "slot.\n"
    "C: {name, points, lines, validSamples, unreadableLines, significantBits, values: {min, max},\n"
    "    signalAxis: A, pointAxis: A, lineAxis: A}; significantBits and values are null without samples.\n"
    "A: {name, unit, min, range}; an axis ends at min + range.\n"
    "I: {name, groups: [I], items: [{name, value}]}, a group of information; \"cut\": true if what is inside is not "
    "shown.\n"
    "With --jsonl a file that cannot be read is {file, error}.";

struct InfoOptions
{
    FileList files;
    bool json = false;
};

FileAnswer Answer(const std::string& file, const std::function<std::string(const FileInfo&)>& show)
{
    const FileInfo info = ReadFileInfo(file);
    FileAnswer answer{show(info), info.problems, info.problems.empty() ? ExitCode::Done : ExitCode::Damaged};
    if (info.cutGroups > 0) {
        answer.messages.push_back("information below level " + std::to_string(shownLevels) + " is not shown");
    }
    return answer;
}

void Show(const InfoOptions& options, Results& results, ExitCode& outcome)
{
    if (options.json && options.files.names.size() > 1) {
        throw CLI::ValidationError("--json", "is for one file, --jsonl for several");
    }
    std::string separator;
    const auto show = [&](const FileInfo& info) {
        return options.files.jsonLines ? ToJson(info, JsonLayout::OneLine)
               : options.json          ? ToJson(info, JsonLayout::Indented)
                                       : std::exchange(separator, "\n") + ToTable(info);
    };
    AnswerForEach(
        options.files, [&](const std::string& file) { return Answer(file, show); }, results, outcome);
}

} // namespace

void AddInfo(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command = *app.add_subcommand("info", "Show what files hold")->footer(jsonShape);
    AddInputFiles(command, options->files.names);
    command.add_flag("--json", options->json, "Print JSON instead of a table");
    AddJsonLines(command, options->files.jsonLines);
    command.callback([options, &results, &outcome] { Show(*options, results, outcome); });
}

} // namespace oxd
