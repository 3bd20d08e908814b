// Gets and sets one value of the measurement information, which is named by the groups that lead to it.
#pragma once

#include "oxd/files/OutputFile.h"
#include "oxd/inspection/CarriedSections.h"
#include "oxd/inspection/InspectFile.h"

#include <string>
#include <vector>

namespace oxd {

// Where a value is. There is always an item, though its name may be empty.
struct MetaPath
{
    // Splits `pathText` at each `separator`, which must not be empty. It can be chosen because names hold any
    // character, so that none suits every file.
    MetaPath(std::string pathText, const std::string& separator);

    std::string text;                // as given, for messages
    std::vector<std::string> groups; // outermost first
    std::string item;
};

// Throws a Failure if the file that was inspected has no such item.
std::string GetMetaValue(const inspect::Inspection& inspection, const MetaPath& path);

struct MetaChange
{
    std::string file; // stays as it is, unless it is the output, too
    MetaPath path;
    std::string value;
    bool create; // the item, and groups on the way to it, if they are missing
    Destination output;
    bool inPlace;  // the output is the file itself
    bool isDryRun; // writes nothing; the output need not be named then
};

// Gives the preview of a dry run. The output has the sections of the file that are to be carried over. Throws a Failure
// if it cannot be made, and also if a file would not keep the value or its name as they are, which sometimes shows only
// when the new file is read again, before it takes its place.
std::string SetMetaValue(const MetaChange& change, const CarriedSections& carried);

} // namespace oxd
