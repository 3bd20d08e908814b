// How the acquiring application shows one channel.
#pragma once

#include "velflexlib/dataset/operators/LineOperator.h"
#include "velstdlib/util/header/HeaderSection.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace veltaris::velflexlib::dataset {

// What the kinds and modes look like is the application's business: here they are only numbered.
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

struct CView
{
    static constexpr std::size_t lineOpCount = 6;

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
    std::array<Parameters, lineOpCount> lineOpParameters; // by operator code

    // Fields whose keys are missing or unreadable keep their value. Throws CNoMappingException for a code that is none,
    // std::out_of_range when "ZRange" is less than two fields, CVELFileBadContentException for
    // too many parameters, and what ParseLeadingInt throws for the operator code of a parameter.
    void Read(const velstdlib::util::CHeaderSection& section);
};

} // namespace veltaris::velflexlib::dataset
