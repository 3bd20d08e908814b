#include "oxd/commands/ProcessCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/NameTable.h"
#include "oxd/edit/Process.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/inspection/SaveLosses.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <array>
#include <memory>
#include <utility>

namespace oxd {

namespace {

struct Options
{
    Processing processing;
    std::vector<std::string> inputs;
    std::array<std::string, settingOptions.size()> values;
    bool trust = false;
    bool strict = false;
    bool csv = false;
    bool json = false;
};

// All but the inputs, which take a look at the file.
ProcessorRequest Requested(const Options& options)
{
    ProcessorRequest request = options.processing.request;
    if (request.IsOfFile() != options.inputs.empty()) {
        throw CLI::RequiredError(request.IsOfFile() ? "For --input, --kind" : "For --kind, --input");
    }
    for (std::size_t i = 0; i < settingOptions.size(); ++i) {
        if (!options.values[i].empty()) {
            AddOption(request, settingOptions[i], options.values[i]);
        }
    }
    return request;
}

// What says how to save is wrong where nothing is.
void RequireNoSaving(const Options& options)
{
    const std::pair<bool, const char*> given[] = {{!options.processing.output.mayReplace, "--no-clobber"},
                                                  {options.strict, "--strict"},
                                                  {!options.processing.records, "--no-provenance"}};
    for (const auto& [isGiven, option] : given) {
        if (isGiven) {
            throw CLI::RequiredError(std::string("For ") + option + ", --output");
        }
    }
}

Processing Wanted(const Options& options)
{
    Processing wanted = options.processing;
    wanted.form = options.csv ? ResultForm::Csv : options.json ? ResultForm::Json : ResultForm::None;
    wanted.saves = wanted.isDryRun || !wanted.output.name.empty();
    if (!wanted.saves && wanted.form == ResultForm::None) {
        throw CLI::RequiredError("--output, --csv or --json");
    }
    if (!wanted.saves) {
        RequireNoSaving(options);
    }
    wanted.request = Requested(options);
    return wanted;
}

void ProcessAloud(const Options& options, Results& results, ExitCode& outcome)
{
    const std::string& file = options.processing.file;
    Processing wanted = Wanted(options);
    const inspect::Inspection inspection = RequireCertain(file, options.trust);
    for (const std::string& input : options.inputs) {
        AddInput(wanted.request, inspection, input);
    }
    const CarriedSections carried(inspection.header);
    if (wanted.saves) {
        AnnounceSave(inspection, carried, options.strict);
    }
    const ProcessingOutcome processed = Process(wanted, carried);
    const std::string subject = file + ": ";
    for (const std::string& message : processed.messages) {
        Complain(subject + message);
    }
    outcome = processed.hasAll ? ExitCode::Done : ExitCode::No;
    results.WriteLines(processed.results + processed.preview);
}

} // namespace

void AddProcess(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<Options>();
    Processing& processing = options->processing;
    CLI::App& command = *app.add_subcommand("process", "Derive slope, adhesion or indentation from curves");
    command.footer("Without --kind, the processors of FILE that are enabled are run.\n" +
                   DescribeNames("Kinds:", kindNames, 13) +
                   "\n\nNumbers have units, such as 100nm. What is derived comes to stand where the outputs of the\n"
                   "processors are, or in the group Processed.\n\n" +
                   notInSavedFiles);
    AddInputFile(command, processing.file);
    command.add_option("--kind", processing.request.kind, "What to derive, see below")
        ->type_name("KIND")
        ->check(IsNameOf(kindNames));
    command.add_option("--input", options->inputs, "Channel of curves to derive it from; may be repeated")
        ->type_name("GROUP/CHANNEL")
        ->allow_extra_args(false);
    for (std::size_t i = 0; i < settingOptions.size(); ++i) {
        command.add_option(settingOptions[i].option, options->values[i], settingOptions[i].description)
            ->type_name(settingOptions[i].shape)
            ->check(IsNotEmpty());
    }
    CLI::Option& csv = *command.add_flag("--csv", options->csv, "Print the values as a table");
    CLI::Option& json = *command.add_flag("--json", options->json, "Print the values as JSON")->excludes(&csv);
    AddOutput(command, processing.output);
    AddSaving(command, {processing.isDryRun, options->strict});
    command.get_option("--dry-run")->excludes(&csv)->excludes(&json);
    AddNoProvenance(command, processing.records, "Do not note down in OUT how it was made");
    AddTrust(command, options->trust);
    command.callback([options, &results, &outcome] { ProcessAloud(*options, results, outcome); });
}

} // namespace oxd
