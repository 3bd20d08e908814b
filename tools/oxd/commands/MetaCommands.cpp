#include "oxd/commands/MetaCommands.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/EachFile.h"
#include "oxd/commandline/JsonLine.h"
#include "oxd/edit/MetaValue.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/inspection/SaveLosses.h"
#include "oxd/system/Results.h"
#include "oxd/system/Text.h"

#include <algorithm>
#include <memory>

namespace oxd {

namespace {

constexpr const char* pathShape = "PATH joins the names of the groups and of the item, for example Scan/Rotation.\n"
                                  "The first match counts, and case matters.";

void AddSeparator(CLI::App& command, std::string& separator)
{
    command.add_option("--separator", separator, "What separates the names in PATH, instead of /")
        ->type_name("TEXT")
        ->check(IsNotEmpty());
}

// The path is the second word, unless an option gives it; all other words are files.
struct GetOptions
{
    FileList files;
    std::string second;
    CLI::Option* secondWord = nullptr;
    std::vector<std::string> others;
    CLI::Option* pathOption = nullptr;
    std::string path;
    std::string separator = "/";
};

class GetFormatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App*, std::string name) const override
    {
        return "Usage: " + name + " [OPTIONS] FILE PATH\n       " + name + " [OPTIONS] --path PATH FILE...\n";
    }
};

void TellPathFromFiles(GetOptions& options)
{
    const bool hasSecond = options.secondWord->count() > 0;
    if (options.pathOption->count() > 0) {
        if (hasSecond) {
            options.others.insert(options.others.begin(), options.second);
        }
        if (std::count(options.others.begin(), options.others.end(), "") > 0) {
            throw CLI::ValidationError("FILE", "must not be empty");
        }
        options.files.names.insert(options.files.names.end(), options.others.begin(), options.others.end());
        return;
    }
    if (!hasSecond) {
        throw CLI::RequiredError("PATH");
    }
    if (!options.others.empty()) {
        throw CLI::RequiredError("For several files, --path");
    }
    options.path = options.second;
}

void Get(GetOptions& options, Results& results, ExitCode& outcome)
{
    TellPathFromFiles(options);
    const MetaPath path(options.path, options.separator);
    const bool several = options.files.names.size() > 1;
    const auto show = [&](const std::string& file, const std::string& value) {
        if (options.files.jsonLines) {
            return JsonLine({{"file", file}, {"path", options.path}, {"value", value}});
        }
        const std::string line = (several ? file + ": " : "") + value;
        return (results.IsTerminal() ? Printable(line) : line) + "\n";
    };
    const auto answer = [&](const std::string& file) {
        return FileAnswer{show(file, GetMetaValue(InspectAloud(file), path))};
    };
    AnswerForEach(options.files, answer, results, outcome);
}

} // namespace

void AddGet(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<GetOptions>();
    CLI::App& command = *app.add_subcommand("get", "Print one value of the measurement information");
    command.formatter(std::make_shared<GetFormatter>());
    command.footer(std::string(pathShape) + "\nFor several files, each value is behind the name of its file.\n" +
                   "With --jsonl: {file, path, value}, or {file, error} for a file that has no such value.");
    AddInputFile(command, options->files.names.emplace_back());
    options->secondWord = command.add_option("PATH", options->second, "Where the value is, see below");
    options->secondWord->type_name("");
    command.add_option("FILES", options->others, "With --path: further files")->type_name("");
    options->pathOption = command.add_option("-p,--path", options->path, "The same for several files");
    options->pathOption->type_name("PATH");
    AddSeparator(command, options->separator);
    AddJsonLines(command, options->files.jsonLines);
    command.callback([options, &results, &outcome] { Get(*options, results, outcome); });
}

void AddSet(CLI::App& app, Results& results)
{
    struct Options
    {
        MetaChange Change() const
        {
            if (!inPlace && !isDryRun && output.name.empty()) {
                throw CLI::RequiredError("--output or --in-place");
            }
            return {file,    MetaPath(path, separator), value, create, inPlace ? Destination{file} : output, inPlace,
                    isDryRun};
        }

        std::string file;
        std::string path;
        std::string separator = "/";
        std::string value;
        bool create = false;
        bool inPlace = false;
        Destination output;
        bool trust = false;
        bool isDryRun = false;
        bool strict = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand("set", "Change one value of the measurement information");
    command.footer(std::string(pathShape) + "\n\n" + notInSavedFiles);
    AddInputFile(command, options->file, "File to read; only --in-place changes it");
    command.add_option("PATH", options->path, "Where the value is, see below")->type_name("")->required();
    command.add_option("VALUE", options->value, "New value")->type_name("")->required();
    AddSeparator(command, options->separator);
    command.add_flag("--create", options->create, "Make the item, and groups on the way, if they are missing");
    AddOutputOrInPlace(command, options->output, options->inPlace);
    AddSaving(command, {options->isDryRun, options->strict});
    AddTrust(command, options->trust);
    command.callback([options, &results] {
        const MetaChange change = options->Change();
        const inspect::Inspection inspection = RequireCertain(change.file, options->trust);
        const CarriedSections carried(inspection.header);
        AnnounceSave(inspection, carried, options->strict);
        results.WriteLines(SetMetaValue(change, carried));
    });
}

} // namespace oxd
