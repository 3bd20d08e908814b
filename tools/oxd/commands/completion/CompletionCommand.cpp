#include "oxd/commands/completion/CompletionCommand.h"

#include "oxd/commandline/NameTable.h"
#include "oxd/commands/completion/Candidates.h"
#include "oxd/commands/completion/CompletionScripts.h"
#include "oxd/system/Results.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace oxd {

namespace {

constexpr std::size_t shellWidth = 6;

void AddScripts(CLI::App& app, Results& results)
{
    const auto shell = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("completion", "Print what makes a shell complete command lines of oxd");
    command.add_option("SHELL", *shell, "Which shell, see below")
        ->type_name("")
        ->required()
        ->check(IsNameOf(completionScripts));
    command.footer(DescribeNames("SHELL, and what makes it complete from then on:", completionScripts, shellWidth) +
                   "\n\nCommands, options and their values are completed, and names of groups and channels once\n"
                   "the name of the file is there.");
    command.callback([shell, &results] {
        const auto isWanted = [&](const CompletionScript& script) { return script.name == *shell; };
        results.Write(std::string(std::ranges::find_if(completionScripts, isWanted)->text));
    });
}

// Not for people, and not listed for them.
void AddComplete(CLI::App& app, Results& results)
{
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::App& command = *app.add_subcommand("complete", "Print what may stand at the end of a command line");
    command.group("");
    command.add_option("WORDS", *words, "Those of the command line, behind --")
        ->type_name("")
        ->expected(0, std::numeric_limits<int>::max());
    command.callback([words, &app, &results] {
        std::string lines;
        for (const Candidate& candidate : Candidates(app, *words)) {
            lines.append(candidate.word).append("\t").append(candidate.description).append("\n");
        }
        results.Write(lines);
    });
}

} // namespace

void AddCompletion(CLI::App& app, Results& results)
{
    AddScripts(app, results);
    AddComplete(app, results);
}

} // namespace oxd
