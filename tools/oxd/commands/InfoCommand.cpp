#include "oxd/commands/InfoCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/EachFile.h"
#include "oxd/info/FileInfo.h"
#include "oxd/inspection/CheckInput.h"

#include <memory>
#include <utility>

namespace oxd {

namespace {

constexpr const char* jsonShape =
    "Bits are the fewest of 8, 16 and 32 that hold every sample of a channel exactly.\n"
    "Sections that the library does not know are not shown.\n\n"
    "Values, bits and valid samples are shown if the samples of a file take up to 16 MiB, and with --values.\n"
    "They are null in JSON otherwise. A channel whose samples may not be its own has (?) behind its name; the exit\n"
    "code is 4 then, unless --trust is given.\n\n"
    "JSON: {file, version, samplesRead, groups: [{id, logicalId, name, channels: [C or null]}], views: {width,\n"
    "    height, list: [V]}, processors: [P], info: [I]}, null being an empty slot.\n"
    "C: {name, points, lines, certain, validSamples, unreadableLines, significantBits, values: {min, max},\n"
    "    signalAxis: A, pointAxis: A, lineAxis: A}; significantBits and values are null without samples.\n"
    "A: {name, unit, min, range}; an axis ends at min + range.\n"
    "V: {positions, channel: L, lineOperator, kind, mode, graphMode, size, aspectRatio, range: {min, max}, "
    "parameters};\n"
    "    a range that is found automatically is null.\n"
    "P: {positions, kind, instance, name, enabled, parameters: {KEY: TEXT}, inputs: [L], outputs: [L]}\n"
    "L: {index, group, channel, groupName, channelName}; the names are null where there is no such channel.\n"
    "I: {name, groups: [I], items: [{name, value}]}, a group of information; \"cut\": true if what is inside is not "
    "shown.\n"
    "With --jsonl a file that cannot be read is {file, error}.";

struct InfoOptions
{
    FileList files;
    bool trust = false;
    SampleReading reading = SampleReading::IfFew;
};

FileAnswer Answer(const std::string& file, const InfoOptions& options,
                  const std::function<std::string(const FileInfo&)>& show)
{
    const inspect::Inspection inspection = InspectAloud(file);
    const FileInfo info = ReadFileInfo(inspection, options.reading);
    const bool isTrusted = options.trust || Doubted(inspection).empty();
    FileAnswer answer{show(info), info.problems,
                      info.problems.empty() && isTrusted ? ExitCode::Done : ExitCode::Damaged};
    if (info.cutGroups > 0) {
        answer.messages.push_back("information below level " + std::to_string(shownLevels) + " is not shown");
    }
    return answer;
}

void Show(const InfoOptions& options, Results& results, ExitCode& outcome)
{
    RequireOneForJson(options.files);
    std::string separator;
    const auto show = [&](const FileInfo& info) {
        return options.files.jsonLines ? ToJson(info, JsonLayout::OneLine)
               : options.files.json    ? ToJson(info, JsonLayout::Indented)
                                       : std::exchange(separator, "\n") + ToTable(info);
    };
    AnswerForEach(
        options.files, [&](const std::string& file) { return Answer(file, options, show); }, results, outcome);
}

} // namespace

void AddInfo(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command = *app.add_subcommand("info", "Show what files hold")->footer(jsonShape);
    AddInputFiles(command, options->files.names);
    AddJson(command, options->files);
    AddTrust(command, options->trust);
    const auto set = [options](SampleReading reading) { return [options, reading] { options->reading = reading; }; };
    CLI::Option& values = *command.add_flag_callback("--values", set(SampleReading::Always), "Read all samples");
    command.add_flag_callback("--no-values", set(SampleReading::Never), "Read no samples")->excludes(&values);
    command.callback([options, &results, &outcome] { Show(*options, results, outcome); });
}

} // namespace oxd
