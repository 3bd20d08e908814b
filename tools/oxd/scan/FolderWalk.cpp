#include "oxd/scan/FolderWalk.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

constexpr std::u8string_view suffix = u8".oxd";

bool IsSameLetter(char8_t letter, char8_t small)
{
    return letter == small || (letter >= u8'A' && letter <= u8'Z' && letter - u8'A' + u8'a' == small);
}

bool HasSuffix(std::u8string_view text)
{
    return text.size() >= suffix.size() &&
           std::equal(suffix.rbegin(), suffix.rend(), text.rbegin(),
                      [](char8_t small, char8_t letter) { return IsSameLetter(letter, small); });
}

} // namespace

FolderWalk::FolderWalk(std::filesystem::path root, FileChoice choice) : m_choice(choice)
{
    std::error_code error;
    if (std::filesystem::is_directory(root, error)) {
        m_root = Enter(root);
    } else {
        m_root = FoundFile{std::move(root)};
    }
}

std::optional<FoundFile> FolderWalk::Next()
{
    if (m_root) {
        return std::exchange(m_root, std::nullopt);
    }
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        if (level.next == level.entries.size()) {
            m_levels.pop_back();
            continue;
        }
        const Entry& entry = level.entries[level.next++];
        std::filesystem::path path = level.folder / entry.name;
        if (!entry.isFolder) {
            return FoundFile{std::move(path)};
        }
        if (auto unlisted = Enter(path)) {
            return unlisted;
        }
    }
    return std::nullopt;
}

// Gives the folder if it cannot be listed to its end: what can be is walked all the same.
std::optional<FoundFile> FolderWalk::Enter(const std::filesystem::path& folder)
{
    std::error_code error;
    Level level{folder, {}};
    for (std::filesystem::directory_iterator found(folder, error), end; !error && found != end;
         found.increment(error)) {
        Add(*found, level.entries);
    }
    std::ranges::sort(level.entries, {}, &Entry::name);
    m_levels.push_back(std::move(level));
    return error ? std::optional(FoundFile{folder, error.message()}) : std::nullopt;
}

void FolderWalk::Add(const std::filesystem::directory_entry& found, std::vector<Entry>& entries) const
{
    std::error_code error;
    const bool isFolder = found.is_directory(error);
    if (isFolder && found.is_symlink(error)) {
        return;
    }
    std::u8string name = found.path().filename().u8string();
    if (isFolder || m_choice == FileChoice::All || HasSuffix(name)) {
        entries.push_back({std::move(name), isFolder});
    }
}

} // namespace oxd
