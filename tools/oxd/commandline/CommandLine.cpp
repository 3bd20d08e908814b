#include "oxd/commandline/CommandLine.h"

#include "oxd/commandline/Suggestion.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <iterator>

namespace oxd {

namespace {

using Words = std::vector<std::string>;

Words OptionNames(const CLI::App& command)
{
    Words names;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

// The first word that looks like an option but is none of the command; empty if there is no such word. Words behind
// "--" are no options.
std::string UnknownOption(const CLI::App& command)
{
    const Words unexpected = command.remaining();
    const auto end = std::find(unexpected.begin(), unexpected.end(), "--");
    const auto found = std::find_if(unexpected.begin(), end,
                                    [](const std::string& word) { return word.size() > 1 && word.front() == '-'; });
    return found == end ? std::string() : found->substr(0, found->find('='));
}

// The parser takes a word in brackets for a list and splits it. Behind such a word, a byte that no argument has keeps
// it whole, and each option takes that away again before it looks at its value.
constexpr char guard = '\0';

Words Guarded(Words words)
{
    for (std::string& word : words) {
        if (word.starts_with('[') && word.ends_with(']')) {
            word += guard;
        }
    }
    return words;
}

void TakeGuards(CLI::App& command)
{
    const auto takeGuard = [](const std::string& word) {
        return word.ends_with(guard) ? word.substr(0, word.size() - 1) : word;
    };
    for (CLI::Option* const option : command.get_options()) {
        option->transform(takeGuard);
    }
}

} // namespace

CLI::App& FindCommand(CLI::App& app, const std::string& name)
{
    const std::vector<CLI::App*> commands = app.get_subcommands({});
    Words names(commands.size());
    std::transform(commands.begin(), commands.end(), names.begin(),
                   [](const CLI::App* command) { return command->get_name(); });
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
        throw Failure(ExitCode::Usage, "\"" + name + "\"",
                      "no such command" + Suggestion(name, names) + " (see oxd --help)");
    }
    return *commands[static_cast<std::size_t>(found - names.begin())];
}

// The parser takes words last first.
void CommandLine::Run()
{
    const auto command = std::find_if(m_arguments.begin(), m_arguments.end(),
                                      [](const std::string& word) { return word.empty() || word.front() != '-'; });
    m_app->parse(Words(std::make_reverse_iterator(command), m_arguments.rend()));
    if (command == m_arguments.end()) {
        throw CLI::RequiredError("A command");
    }
    m_command = &FindCommand(*m_app, *command);
    TakeGuards(*m_command);
    m_command->parse(Guarded(Words(m_arguments.rbegin(), std::make_reverse_iterator(command + 1))));
}

std::string CommandLine::Help() const
{
    return m_command == nullptr ? m_app->help() : m_command->help("oxd");
}

// A misspelt option often makes a required one missing, which would be the lesser help.
std::string CommandLine::Explanation(const CLI::ParseError& error) const
{
    const CLI::App& asked = m_command == nullptr ? *m_app : *m_command;
    const std::string unknown = UnknownOption(asked);
    const std::string wrong =
        unknown.empty() ? error.what() : "unknown option " + unknown + Suggestion(unknown, OptionNames(asked));
    return wrong + " (see oxd " + (m_command == nullptr ? "" : m_command->get_name() + " ") + "--help)";
}

std::string CommandLine::NamedFile() const
{
    const CLI::Option* const file = m_command == nullptr ? nullptr : m_command->get_option_no_throw("FILE");
    return file != nullptr && file->count() == 1 ? file->as<std::string>() : std::string("a file");
}

} // namespace oxd
