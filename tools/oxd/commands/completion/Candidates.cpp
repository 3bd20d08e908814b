#include "oxd/commands/completion/Candidates.h"

#include "oxd/inspection/HeaderChannels.h"
#include "oxd/inspection/InspectFile.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace oxd {

namespace {

using Words = std::vector<std::string>;

constexpr std::string_view groupOption = "--group";
constexpr std::string_view channelOption = "--channel";

// A line of the answer is a candidate, and a tab ends it.
bool IsOneLine(const std::string& word)
{
    return std::ranges::none_of(word, [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

// Candidates that begin as a word does, each once, in the order in which they are added.
class CandidateList
{
public:
    explicit CandidateList(const std::string& begin) : m_begin(&begin) {}

    void Add(const std::string& word, const std::string& description = {})
    {
        const auto isKnown = [&](const Candidate& known) { return known.word == word; };
        if (word.starts_with(*m_begin) && IsOneLine(word) && std::ranges::none_of(m_found, isKnown)) {
            m_found.push_back({word, description.substr(0, description.find('\n'))});
        }
    }

    std::vector<Candidate> Take() { return std::move(m_found); }

private:
    const std::string* m_begin;
    std::vector<Candidate> m_found;
};

void AddOptions(const CLI::App& command, CandidateList& list)
{
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            list.Add("--" + name, option->get_description());
        }
        for (const std::string& name : option->get_snames()) {
            list.Add("-" + name, option->get_description());
        }
    }
}

const CLI::Option* FindOption(const CLI::App& command, const std::string& word)
{
    const std::vector<const CLI::Option*> options = command.get_options();
    const auto found = std::ranges::find_if(
        options, [&](const CLI::Option* option) { return option->nonpositional() && option->check_name(word); });
    return found == options.end() ? nullptr : *found;
}

// The words that an option takes are in the name of its type: OP:{none,mean,line}.
void AddValues(const CLI::Option& option, CandidateList& list)
{
    const std::string type = option.get_type_name();
    const auto begin = type.find('{'), end = type.find('}');
    if (begin == std::string::npos || end == std::string::npos) {
        return;
    }
    std::size_t from = begin + 1;
    while (from < end) {
        const std::size_t comma = std::min(type.find(',', from), end);
        list.Add(type.substr(from, comma - from));
        from = comma + 1;
    }
}

// What follows an option among the words ahead of the last one.
std::optional<std::string> ValueOf(const CLI::Option* option, const Words& words)
{
    for (std::size_t i = 1; option != nullptr && i + 2 < words.size(); ++i) {
        if (words[i].starts_with('-') && option->check_name(words[i])) {
            return words[i + 1];
        }
    }
    return std::nullopt;
}

// The names of the groups, or of the channels of one group, or of all if it is not said of which.
void AddNames(const std::string& file, bool ofGroups, const std::optional<std::string>& group, CandidateList& list)
try {
    const inspect::Inspection inspection = InspectQuietly(file);
    const HeaderChannels names(*inspection.dataSet);
    for (const std::uint64_t id : names.GroupIds()) {
        if (ofGroups) {
            list.Add(names.GroupName(id));
            continue;
        }
        const std::uint64_t slots = group && names.GroupName(id) != *group ? 0 : names.SlotCount(id);
        for (std::uint64_t slot = 0; slot < slots; ++slot) {
            list.Add(names.ChannelName(id, slot).value_or(std::string()), names.GroupName(id));
        }
    }
} catch (const Failure&) {
    return; // whoever types the name of a file may not have made it yet
}

void AddValuesOf(const CLI::Option& option, const CLI::App& command, const Words& words, CandidateList& list)
{
    AddValues(option, list);
    const bool ofGroups = option.check_name(std::string(groupOption));
    if (!ofGroups && !option.check_name(std::string(channelOption))) {
        return;
    }
    const auto file = std::find_if(words.begin() + 1, words.end() - 1,
                                   [](const std::string& word) { return word.ends_with(".oxd"); });
    if (file != words.end() - 1) {
        AddNames(*file, ofGroups, ValueOf(FindOption(command, std::string(groupOption)), words), list);
    }
}

} // namespace

std::vector<Candidate> Candidates(const CLI::App& app, const Words& words)
{
    if (words.empty()) {
        return {};
    }
    CandidateList list(words.back());
    const std::vector<const CLI::App*> commands = app.get_subcommands({});
    const auto named = [&](const CLI::App* command) { return command->get_name() == words.front(); };
    const auto command = std::ranges::find_if(commands, named);
    if (words.size() == 1 || words.front() == "help") {
        for (const CLI::App* const known : commands) {
            if (!known->get_group().empty()) {
                list.Add(known->get_name(), known->get_description());
            }
        }
    }
    if (words.size() == 1) {
        AddOptions(app, list);
    } else if (command != commands.end()) {
        const CLI::Option* const option = FindOption(**command, words[words.size() - 2]);
        if (option != nullptr && option->get_items_expected_max() > 0) {
            AddValuesOf(*option, **command, words, list);
        } else if (words.back().starts_with('-')) {
            AddOptions(**command, list);
        }
    }
    return list.Take();
}

} // namespace oxd
