#include "oxd/commands/FindingCommands.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/EachFile.h"
#include "oxd/commandline/Suggestion.h"
#include "oxd/system/Results.h"
#include "oxd/validate/Report.h"
#include "oxd/validate/RuleText.h"
#include "oxd/validate/SarifLog.h"

#include <algorithm>
#include <iterator>
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
    bool sarif = false;
};

std::string TextOf(const inspect::Inspection& inspection, const ValidateOptions& options)
{
    return options.files.json || options.files.jsonLines ? ToJson(inspection, options.files.jsonLines)
                                                         : ToText(inspection);
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
    RequireOneForJson(options.files);
    SarifLog log(OXD_VERSION);
    const auto answer = [&](const std::string& file) {
        const inspect::Inspection inspection = InspectInto(log, file);
        return FileAnswer{
            options.sarif ? std::string() : TextOf(inspection, options), {}, Judge(inspection, options.strict)};
    };
    AnswerForEach(options.files, answer, results, outcome);
    if (options.sarif) {
        results.Write(log.Text());
    }
}

const inspect::Rule& KnownRule(const std::string& id)
{
    const inspect::Rule* const rule = inspect::FindRule(id);
    if (rule == nullptr) {
        std::vector<std::string> ids;
        std::transform(inspect::AllRules().begin(), inspect::AllRules().end(), std::back_inserter(ids),
                       [](const inspect::Rule& known) { return std::string(known.id); });
        const bool isNumber = id.find_first_not_of("0123456789") == std::string::npos;
        throw Failure(ExitCode::Usage, "\"" + id + "\"",
                      "no such finding" + Suggestion((isNumber ? "OXD" : "") + id, ids));
    }
    return *rule;
}

std::string Explanation(const std::string& id, bool json)
{
    if (id.empty()) {
        return json ? ToJson(inspect::AllRules()) : ToText(inspect::AllRules());
    }
    const inspect::Rule& rule = KnownRule(id);
    return json ? ToJson(rule) : ToText(rule);
}

} // namespace

void AddValidate(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<ValidateOptions>();
    CLI::App& command = *app.add_subcommand("validate", "Find what is wrong with files")->footer(validateHelp);
    AddInputFiles(command, options->files.names);
    command.add_flag("--strict", options->strict, "Take warnings for errors in the exit code");
    const JsonOptions json = AddJson(command, options->files);
    command.add_flag("--sarif", options->sarif, "Print one log in SARIF 2.1.0 for all files")
        ->excludes(&json.document)
        ->excludes(&json.lines);
    command.callback([options, &results, &outcome] { Validate(*options, results, outcome); });
}

void AddExplain(CLI::App& app, Results& results)
{
    struct Options
    {
        std::string id;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand("explain", "Explain a finding of oxd validate");
    command.add_option("ID", options->id, "Its id, such as OXD205; without it, all are listed")->type_name("");
    command.add_flag("--json", options->json, "Print JSON instead of text");
    command.callback([options, &results] { results.Write(Explanation(options->id, options->json)); });
}

} // namespace oxd
