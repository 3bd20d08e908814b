// Saves from a damaged file what is certain.
#pragma once

#include "salvage/Judgement.h"

#include "velflexlib/dataset/DataSet.h"

#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::salvage {

// What became of a line.
enum class LineState
{
    Saved,
    Empty,    // it has no samples, says the header
    Missing,  // the file ends before it does
    Uncertain // its samples may not be its own
};

// Adjacent lines, of which there are some.
struct LineRange
{
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    LineState state = LineState::Saved;
};

// What became of the lines of one channel. Texts are UTF-8 as far as the file's are.
struct SalvagedChannel
{
    std::uint64_t group = 0, slot = 0; // positions, from 0
    std::string groupName, name;       // the name is that of the signal axis
    std::string section;               // of the header; empty where it could not be read
    std::uint64_t points = 0, lines = 0;
    std::uint64_t savedLines = 0;  // with samples
    std::uint64_t heldLines = 0;   // in the data set: fewer than `lines` where no file can hold so many without samples
    std::vector<LineRange> ranges; // all lines, in their order
};

// A plain value.
struct Salvaged
{
    std::shared_ptr<velflexlib::dataset::CDataSet> dataSet; // with the samples that are certain; never null
    std::vector<SalvagedChannel> channels;                  // in the order of groups and slots
    HeaderState header = HeaderState::AsItStands;
    std::optional<Repair> repair;
    std::string doubt;      // a sentence on the lines that are uncertain
    std::string headerText; // the header as it is taken, with its end mark, for what the data set does not keep

    // Whether anything is left that a file could hold: a group, or information.
    bool HasContent() const;
};

// All that is certain under the condition that Judgement.h states. Views, processors and unknown sections are in
// the header's text only, as with any data set. Memory goes by the samples. Throws std::system_error when the file
// cannot be read, and std::bad_alloc.
Salvaged Salvage(std::istream& file, const std::string& fileName, bool trust);

// Saves the data set as a file that the library opens. The name is as the library takes names. Throws what a save
// throws.
void Save(const Salvaged& salvaged, const std::string& fileName);

} // namespace veltaris::salvage
