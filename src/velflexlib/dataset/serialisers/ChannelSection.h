// The axes of a channel in its section of the header.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <cstdint>
#include <map>
#include <string>

namespace veltaris::velflexlib::dataset {

// Versions of a channel section.
inline constexpr int prefixedUnitsVersion = 1; // units carry the SI prefix of the axis' numbers
inline constexpr int plainVersion = 2;
inline constexpr int lineAxesVersion = 3; // lines have point axes of their own

void LoadAxes(CDataBuffer& buffer, const velstdlib::util::CVELKeyToValueList& section, int version);
void SaveAxes(const CDataBuffer& buffer, velstdlib::util::CVELKeyToValueList& section);

// The lines that the section gives an axis, where what it leaves out is that of `common`. Lines from `lineCount` on
// are ignored. Throws CVELFileBadContentException, with the file's name, for a negative number of points.
std::map<std::uint64_t, CLineAxis> LoadLineAxes(const velstdlib::util::CVELKeyToValueList& section,
                                                const CLineAxis& common, std::uint64_t lineCount,
                                                const std::string& fileName);

// Whether some line's axis, as it would be written, differs from the channel's.
bool HasLineAxes(const CDataBuffer& buffer);
void SaveLineAxes(const CDataBuffer& buffer, velstdlib::util::CVELKeyToValueList& section);

} // namespace veltaris::velflexlib::dataset
