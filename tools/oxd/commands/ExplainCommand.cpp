#include "oxd/commands/ExplainCommand.h"

#include "oxd/commands/Suggestion.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Results.h"
#include "oxd/validate/RuleText.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace oxd {

namespace {

using veltaris::inspect::AllRules;
using veltaris::inspect::Rule;

const Rule& KnownRule(const std::string& id)
{
    const Rule* const rule = veltaris::inspect::FindRule(id);
    if (rule == nullptr) {
        std::vector<std::string> ids;
        std::transform(AllRules().begin(), AllRules().end(), std::back_inserter(ids),
                       [](const Rule& known) { return std::string(known.id); });
        throw Failure(ExitCode::No, "\"" + id + "\"", "no such finding" + Suggestion(id, ids));
    }
    return *rule;
}

std::string Explanation(const std::string& id, bool json)
{
    if (id.empty()) {
        return json ? ToJson(AllRules()) : ToText(AllRules());
    }
    const Rule& rule = KnownRule(id);
    return json ? ToJson(rule) : ToText(rule);
}

} // namespace

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
