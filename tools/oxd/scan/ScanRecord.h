// What `oxd scan` tells of one file: a line of JSON of the shape that docs/schema/scan.schema.json describes.
#pragma once

#include "oxd/scan/FileTime.h"
#include "oxd/scan/FolderWalk.h"

#include <optional>
#include <string>

namespace oxd {

// With a line feed at the end; empty for a file that was last changed before `since`. A file that cannot be read, is
// damaged or of another format is a record with the reason. Reads the header only. May be called by several threads at
// once.
std::string ScanRecord(const FoundFile& found, std::optional<FileTime> since);

} // namespace oxd
