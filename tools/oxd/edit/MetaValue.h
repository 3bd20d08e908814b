// One value of the measurement information, named by the groups that lead to it.
#pragma once

#include <string>
#include <vector>

namespace oxd {

struct MetaPath
{
    // Names hold any character, hence the choice of the separator.
    MetaPath(std::string pathText, const std::string& separator);

    std::string text;
    std::vector<std::string> groups; // outermost first
    std::string item;
};

// Throws a Failure if the file cannot be read or has no such item.
std::string GetMetaValue(const std::string& file, const MetaPath& path);

struct MetaChange
{
    std::string file; // stays as it is
    MetaPath path;
    std::string value;
    bool create; // the item, and groups on the way to it, if they are missing
    std::string output;
};

// Throws a Failure if the output could not be made.
void SetMetaValue(const MetaChange& change);

} // namespace oxd
