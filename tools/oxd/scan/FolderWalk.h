// Finds the files in a folder and in the folders below it, in an order that depends on their names alone.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

// A file that was found, or a folder that cannot be listed, which has a problem.
struct FoundFile
{
    std::filesystem::path path;
    std::optional<std::string> problem = {};
};

enum class FileChoice
{
    ByName, // those whose names end with .oxd, in small or capital letters
    All
};

// Goes through folders by the bytes of the names in them, a folder's content where its own name stands. Links to files
// count as files; links to folders are left out, since they may lead in circles. Memory goes by the entries of the
// folders that are being walked, not by those of the tree. Not thread-safe.
class FolderWalk
{
public:
    // A root that is no folder is found itself, whatever its name and whether it exists.
    FolderWalk(std::filesystem::path root, FileChoice choice);

    // The next file; nothing in the end.
    std::optional<FoundFile> Next();

private:
    struct Entry
    {
        std::u8string name;
        bool isFolder;
    };
    struct Level
    {
        std::filesystem::path folder;
        std::vector<Entry> entries;
        std::size_t next = 0;
    };

    std::optional<FoundFile> Enter(const std::filesystem::path& folder);
    void Add(const std::filesystem::directory_entry& found, std::vector<Entry>& entries) const;

    std::optional<FoundFile> m_root; // until it is found
    std::vector<Level> m_levels;
    FileChoice m_choice;
};

} // namespace oxd
