// What each kind of processor derives from a channel of curves.
#pragma once

#include "processing/DerivedChannel.h"
#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/processors/ProcessorBase.h"

#include <atomic>
#include <functional>
#include <variant>
#include <vector>

namespace veltaris::processing {

// Lets a caller look on, and stop. `abort` is read before each line; `advance` is called after each, and what it throws
// passes through.
struct CWatch
{
    const std::atomic<bool>& abort;
    std::function<void()> advance;
};

using CDerived = std::variant<CDerivedValues, CDerivedCurves>;

// The channels that the processor derives from one input, in the order of its outputs, each with one value or one curve
// for each line:
//   Slope         the slope and its standard error
//   MaxAdhesion   the adhesion, its standard error and the position of the minimum: as a force if sensitivity and
//                 spring constant are known, as a deflection with the sensitivity alone, else in the unit of the signal
//   Indentation   the indentation behind the contact point, its maximum with standard error, and the contact point with
//                 standard error
// Their names begin with the display name of the processor. Where the watch aborts, later lines are missing. Throws
// CProcessingError if the channel does not suit the processor.
std::vector<CDerived> Derive(const velflexlib::dataset::CProcessorBase& processor,
                             const velflexlib::dataset::CDataBuffer& input,
                             const velflexlib::dataset::CInfoSet& information, const CWatch& watch);

} // namespace veltaris::processing
