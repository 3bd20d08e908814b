// The parameters of processors as what the curves are analysed with: in the units of a channel, and with what the
// measurement information says where a processor does not.
#pragma once

#include "curves/CurveOptions.h"
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/processors/Processors.h"

#include <string>
#include <vector>

namespace veltaris::processing {

// Prefixes of units make no difference, and a position without a unit is in that of the point axis. These throw
// CParameterError for a parameter in another unit or out of bounds, and for a range with one end.

curves::CPositionRange SlopeRange(const velflexlib::dataset::CProcessorSlope& processor,
                                  const velflexlib::dataset::CDataBuffer& channel);

// The spring constant is the item `Spring constant` of the group `Tool` unless the processor has one, and the
// sensitivity the item `Deflection sensitivity`. A signal in metres is a deflection, and needs no sensitivity; of one
// in newtons it is the reciprocal of the spring constant; any other takes one in metres per its unit. An item that is
// missing, in another unit or not above 0 stands for unknown. The sensitivity is for the unit that the signal has, with
// its prefix.
curves::CCurveOptions ForceOptions(const velflexlib::dataset::CForceProcessor& processor,
                                   const velflexlib::dataset::CDataBuffer& channel,
                                   const velflexlib::dataset::CInfoSet& information);

// A sentence for each item that ForceOptions looks for and finds, but cannot use.
std::vector<std::string> UnusableItems(const velflexlib::dataset::CForceProcessor& processor,
                                       const velflexlib::dataset::CDataBuffer& channel,
                                       const velflexlib::dataset::CInfoSet& information);

} // namespace veltaris::processing
