// Loading a file into the record of its handle, and saving the record to its file.
#pragma once

#include "api/FileHandleStruct.h"

#include <boost/assert/source_location.hpp>

#include <cstdint>
#include <string>

// The section of a header in which everything else is rooted.
inline constexpr const char* dataSetSection = "DataSet";

// Reads the file that the record names into the record, which must be new. A file without a header leaves it empty.
// Throws CVELFileOpenException, raised at `where`, when the file cannot be opened, std::ios_base::failure when it
// cannot be read, and what is thrown for bad content. What was loaded until then stays in the record.
void LoadFile(FileHandleStruct& file, const boost::source_location& where);

// Writes the record to the file that it names, in place of an older one. All that can be found wrong with the data set
// is found, and all memory is taken, before the old file is touched. The document of the last opening or saving is
// replaced at that moment, too.
// Throws CVELFileOpenException, raised at `where`, when the file cannot be opened, CVELFileSaveException for a data set
// that no file can hold, and std::ios_base::failure when writing fails.
void SaveFile(FileHandleStruct& file, const boost::source_location& where);

// The header as it stands in a file, up to and including the mark that ends it. Throws CVELFileSaveException when that
// is more than `limit` bytes, which could not be opened again.
std::string RenderHeader(const veltaris::velstdlib::util::CVELOXDConfig& document, std::uint64_t limit);
