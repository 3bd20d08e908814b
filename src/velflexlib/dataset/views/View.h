// A view: how the acquiring application shows one channel.
#pragma once

#include "velflexlib/dataset/operators/LineOperatorTable.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <array>
#include <map>
#include <string>
#include <utility>

namespace veltaris::velflexlib::dataset {

// What the kinds and modes below look like is the application's business. Here they only have the numbers that files
// have for them.
enum class DataViewID
{
    Kind0 = 0,
    Kind1 = 1,
    Kind2 = 2,
    Kind3 = 3,
    Kind4 = 4,
    Kind5 = 5,
    Kind6 = 6,
};

enum class ViewMode
{
    Mode0 = 0,
    Mode1 = 1,
};

enum class GraphMode
{
    Mode0 = 0,
    Mode1 = 1,
    Mode2 = 2,
};

// Field by field what the section of a view says. A view that was just made has the values that apply when its section
// says nothing, among them that the range of displayed values is found automatically.
//
// Invariant: `lineOpParameters` has one list for each operator, which may be empty. Not thread-safe while it is read
// from a file; a view set hands out views that do not change any more.
struct CView
{
    // The values of an operator's parameters by their names, both as the file has them.
    using Parameters = std::map<std::string, std::string>;

    DataViewID id = DataViewID::Kind0;
    LineOpID lineOp = LineOpID::RawData;
    int channel = 0;
    int frame = 0;
    int size = 0;
    ViewMode viewMode = ViewMode::Mode0;
    GraphMode graphMode = GraphMode::Mode0;
    int aspectRatio = 0;
    bool autoZRange = true;
    std::pair<int, int> zRange{0, 0};
    std::array<Parameters, lineOpCount> lineOpParameters; // by the code of the operator

    // Fields whose keys are missing or unreadable keep their value. Throws CNoMappingException for an unknown code of a
    // kind, mode or operator, std::out_of_range when "ZRange" has fewer than two fields, CVELFileBadContentException
    // for too many parameters, and what ParseLeadingInt throws for the operator code of a parameter.
    void Read(const velstdlib::util::CHeaderSection& section);
};

} // namespace veltaris::velflexlib::dataset
