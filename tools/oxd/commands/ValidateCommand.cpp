#include "oxd/commands/ValidateCommand.h"

#include "oxd/commands/CommonOptions.h"
#include "oxd/commands/EachFile.h"
#include "oxd/system/Results.h"
#include "oxd/validate/Report.h"
#include "oxd/validate/SarifLog.h"

#include <memory>

namespace oxd {

namespace {

constexpr const char* validateHelp =
    "Only the header of a file is read, so that this takes no longer for large ones. oxd explain ID explains a\n"
    "finding. Exit codes: 0 no errors, 1 errors, or with --strict warnings, 3 cannot open, 4 cannot read.";

struct ValidateOptions
{
    FileList files;
    bool strict = false;
    bool json = false;
    bool sarif = false;
};

std::string Report(const inspect::Inspection& inspection, const ValidateOptions& options)
{
    return options.json || options.files.jsonLines ? ToJson(inspection, options.files.jsonLines) : ToText(inspection);
}

ExitCode Judge(const inspect::Inspection& inspection, bool strict)
{
    const SeverityCounts counts = CountFindings(inspection);
    return counts.errors > 0 || (strict && counts.warnings > 0) ? ExitCode::No : ExitCode::Done;
}

inspect::Inspection InspectInto(SarifLog& log, const std::string& file)
{
    try {
        inspect::Inspection inspection = InspectFile(file);
        log.Add(inspection);
        return inspection;
    } catch (const Failure& failure) {
        log.AddFailure(file, failure.what());
        throw;
    }
}

void Validate(const ValidateOptions& options, Results& results, ExitCode& outcome)
{
    if (options.json && options.files.names.size() > 1) {
        throw CLI::ValidationError("--json", "is for one file, --jsonl for several");
    }
    SarifLog log(OXD_VERSION);
    const auto answer = [&](const std::string& file) {
        const inspect::Inspection inspection = InspectInto(log, file);
        return FileAnswer{options.sarif ? std::string() : Report(inspection, options), {},
                          Judge(inspection, options.strict)};
    };
    AnswerForEach(options.files, answer, results, outcome);
    if (options.sarif) {
        results.Write(log.Text());
    }
}

} // namespace

void AddValidate(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<ValidateOptions>();
    CLI::App& command = *app.add_subcommand("validate", "Find what is wrong with files")->footer(validateHelp);
    AddInputFiles(command, options->files.names);
    command.add_flag("--strict", options->strict, "Take warnings for errors in the exit code");
    CLI::Option& json = *command.add_flag("--json", options->json, "Print JSON instead of text");
    AddJsonLines(command, options->files.jsonLines);
    command.add_flag("--sarif", options->sarif, "Print one log in SARIF 2.1.0 for all files")
        ->excludes(&json)
        ->excludes(command.get_option("--jsonl"));
    command.callback([options, &results, &outcome] { Validate(*options, results, outcome); });
}

} // namespace oxd
