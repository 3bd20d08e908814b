#include "oxd/commands/DiffCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/compare/Comparison.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

namespace oxd {

namespace {

constexpr const char* diffHelp =
    "ASPECT is one of structure, bits, axes, samples, information and other, which is what a save drops or writes\n"
    "anew. Groups are paired by name, channels by slot, information by its path. A number is the same if any\n"
    "tolerance that is given says so; without one it must be equal. Exit codes: 0 the same, 1 different.";

struct DiffOptions
{
    std::string a;
    std::string b;
    std::vector<std::string> only;
    std::vector<std::string> ignored;
    ComparisonOptions comparison;
    bool json = false;
    bool quiet = false;
    bool trust = false;
};

Aspects WantedAspects(const DiffOptions& options)
{
    const auto contains = [](const std::vector<std::string>& names, std::string_view name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    Aspects wanted;
    for (const AspectName& known : aspectNames) {
        const bool isChosen = options.only.empty() || contains(options.only, known.name);
        if (isChosen && !contains(options.ignored, known.name)) {
            wanted.insert(known.aspect);
        }
    }
    return wanted;
}

// Several aspects follow the option in one word, so that it does not take the names of files for aspects.
CLI::Option& AddAspects(CLI::App& command, const char* name, std::vector<std::string>& aspects, const char* description)
{
    std::vector<std::string> known;
    std::transform(aspectNames.begin(), aspectNames.end(), std::back_inserter(known),
                   [](const AspectName& aspect) { return std::string(aspect.name); });
    return *command.add_option(name, aspects, description)
                ->type_name("ASPECT[,ASPECT...]")
                ->delimiter(',')
                ->allow_extra_args(false)
                ->check(CLI::IsMember(known).description(""));
}

// The command line library takes -1 for the largest number.
CLI::Validator IsCount()
{
    const auto check = [](const std::string& text) -> std::string {
        const bool isCount = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
        return isCount ? "" : text + " is not a whole number from 0 on";
    };
    return {check, ""};
}

// Its own check takes what is not a number for one that is not negative.
CLI::Validator IsTolerance()
{
    const auto check = [](const std::string& text) -> std::string {
        double number = -1;
        const char* const end = text.data() + text.size();
        const bool isNumber = std::from_chars(text.data(), end, number).ptr == end;
        return isNumber && std::isfinite(number) && number >= 0 ? "" : text + " is not a number from 0 on";
    };
    return {check, ""};
}

void AddTolerances(CLI::App& command, Tolerance& tolerance)
{
    command.add_option("--steps", tolerance.steps, "Samples may be N steps of the coarser quantisation apart")
        ->type_name("N")
        ->check(IsCount());
    command.add_option("--absolute", tolerance.absolute, "Samples may be X apart, in the unit of their axis")
        ->type_name("X")
        ->check(IsTolerance());
    command
        .add_option("--relative", tolerance.relative,
                    "Samples and numbers of axes may be apart X times the larger of their magnitudes")
        ->type_name("X")
        ->check(IsTolerance());
    command.add_flag("--nan-equal", tolerance.nanEqual, "What is not a number is the same in both files");
}

void Diff(const DiffOptions& options, Results& results, ExitCode& outcome)
{
    const bool trusts = options.trust || !options.comparison.aspects.contains(Aspect::Samples);
    RequireCertain(options.a, trusts);
    RequireCertain(options.b, trusts);
    const Comparison comparison = CompareFiles(options.a, options.b, options.comparison);
    outcome = !comparison.problems.empty()     ? ExitCode::Damaged
              : comparison.differences.empty() ? ExitCode::Done
                                               : ExitCode::No;
    if (!options.quiet) {
        results.Write(options.json ? ToJson(comparison, options.comparison) : ToText(comparison));
    }
    for (const std::string& problem : comparison.problems) {
        Complain(problem);
    }
}

} // namespace

void AddDiff(CLI::App& app, Results& results, ExitCode& outcome)
{
    const auto options = std::make_shared<DiffOptions>();
    CLI::App& command = *app.add_subcommand("diff", "Compare two files")->footer(diffHelp);
    command.add_option("A", options->a, "One file")->type_name("")->required();
    command.add_option("B", options->b, "Another file")->type_name("")->required();
    CLI::Option& only = AddAspects(command, "--only", options->only, "Compare only these");
    AddAspects(command, "--ignore", options->ignored, "Do not compare these").excludes(&only);
    AddTolerances(command, options->comparison.tolerance);
    command
        .add_option("--show", options->comparison.shownAtMost, "Samples or lines to show of each channel, default 10")
        ->type_name("N")
        ->check(IsCount());
    command.add_flag("--json", options->json, "Print JSON instead of text");
    command.add_flag("--quiet", options->quiet, "Print nothing: the exit code tells");
    AddTrust(command, options->trust);
    command.callback([options, &results, &outcome] {
        options->comparison.aspects = WantedAspects(*options);
        Diff(*options, results, outcome);
    });
}

} // namespace oxd
