// Tells of all files in folders what their headers hold.
#pragma once

#include "oxd/scan/FileTime.h"
#include "oxd/scan/FolderWalk.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace oxd {

class Results;

struct ScanRequest
{
    std::vector<std::filesystem::path> roots; // folders and files
    FileChoice choice = FileChoice::ByName;
    std::optional<FileTime> since = {};
    unsigned threads = 1;
};

// Writes the records of the files below each root, root after root, in the order of FolderWalk. Several threads read
// headers, but the order is that of one. Memory does not grow with the number of files, but for the names in a folder.
// An interruption ends the process between two lines. Throws what Results::Write throws.
void Scan(const ScanRequest& request, Results& results);

} // namespace oxd
