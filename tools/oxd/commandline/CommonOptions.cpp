#include "oxd/commandline/CommonOptions.h"

namespace oxd {

namespace {

CLI::Option& OutputName(CLI::App& command, Destination& output)
{
    return *command.add_option("-o,--output", output.name, "File to write; an existing one is replaced")
                ->type_name("OUT")
                ->check(IsNotEmpty());
}

CLI::Option& NoClobber(CLI::App& command, Destination& output)
{
    const auto protect = [&output] { output.mayReplace = false; };
    return *command.add_flag_callback("--no-clobber", protect, "Do not replace a file that exists");
}

} // namespace

void AddInputFile(CLI::App& command, std::string& file, const char* description)
{
    command.add_option("FILE", file, description)->type_name("")->required()->check(IsNotEmpty());
}

void AddInputFiles(CLI::App& command, std::vector<std::string>& files)
{
    command.add_option("FILE", files, "Files to read; they stay as they are")
        ->type_name("")
        ->required()
        ->check(IsNotEmpty());
}

CLI::Option& AddOutput(CLI::App& command, Destination& output)
{
    CLI::Option& name = OutputName(command, output);
    AddNoClobber(command, output);
    return name;
}

void AddOutputOrInPlace(CLI::App& command, Destination& output, bool& inPlace)
{
    CLI::Option& name = OutputName(command, output);
    CLI::Option& noClobber = NoClobber(command, output);
    command.add_flag("--in-place", inPlace, "Replace FILE itself")->excludes(&name)->excludes(&noClobber);
}

void AddNoClobber(CLI::App& command, Destination& output)
{
    NoClobber(command, output);
}

SelectionOptions AddSelection(CLI::App& command, ChannelSelection& selection)
{
    AddInputFile(command, selection.file);
    CLI::Option* const group =
        command.add_option("-g,--group", selection.group, "Name of the group, or id: and its id")
            ->type_name("NAME|id:N")
            ->required();
    CLI::Option* const channel =
        command.add_option("-c,--channel", selection.channel, "Index of the channel, or its name")
            ->type_name("INDEX|NAME")
            ->required();
    AddTrust(command, selection.trust);
    return {*group, *channel};
}

void AddSaving(CLI::App& command, const SavingOptions& saving)
{
    command.add_flag("--dry-run", saving.isDryRun, "Write nothing, and show what would change");
    command.add_flag("--strict", saving.strict, "Write nothing if the save would drop or change anything else");
}

void AddNoProvenance(CLI::App& command, bool& records, const char* description)
{
    command.add_flag_callback(
        "--no-provenance", [&records] { records = false; }, description);
}

void AddTrust(CLI::App& command, bool& trust)
{
    command.add_flag("--trust", trust,
                     "Take samples also where they may not be those of their channel, or have wrong values");
}

JsonOptions AddJson(CLI::App& command, FileList& files)
{
    CLI::Option& document = *command.add_flag("--json", files.json, "Print JSON, of one file");
    return {document, AddJsonLines(command, files.jsonLines)};
}

void RequireOneForJson(const FileList& files)
{
    if (files.json && files.names.size() > 1) {
        throw CLI::ValidationError("--json", "is for one file, --jsonl for several");
    }
}

CLI::Option& AddJsonLines(CLI::App& command, bool& jsonLines)
{
    return *command.add_flag("--jsonl", jsonLines, "Print a line of JSON for each file, errors included");
}

CLI::Validator IsNotEmpty()
{
    const auto check = [](const std::string& text) { return std::string(text.empty() ? "must not be empty" : ""); };
    return {check, ""};
}

} // namespace oxd
