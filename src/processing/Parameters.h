// The parameters of processors as what the curves are analysed with: in the units of a channel, and with what the
// measurement information says where a processor does not.
#pragma once

#include "curves/CurveOptions.h"
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/processors/Processors.h"

namespace veltaris::processing {

// All throw CProcessingError for a parameter in a unit that does not suit the channel.

curves::CPositionRange SlopeRange(const velflexlib::dataset::CProcessorSlope& processor,
                                  const velflexlib::dataset::CDataBuffer& channel);

// The spring constant is the item `Spring constant` of the group `Tool` unless the processor has one, and the
// sensitivity the item `Deflection sensitivity`. A signal in metres is a deflection, and needs no sensitivity; of one
// in newtons it is the reciprocal of the spring constant; any other takes one in metres per its unit. An item that is
// missing, in another unit or not above 0 stands for unknown.
curves::CCurveOptions ForceOptions(const velflexlib::dataset::CForceProcessor& processor,
                                   const velflexlib::dataset::CDataBuffer& channel,
                                   const velflexlib::dataset::CInfoSet& information);

} // namespace veltaris::processing
