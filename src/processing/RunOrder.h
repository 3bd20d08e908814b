// The order in which processors run.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"

#include <span>
#include <vector>

namespace veltaris::processing {

using Processors = std::vector<const velflexlib::dataset::CProcessorBase*>;

// How messages call a processor: by its name and its section.
std::string NameOf(const velflexlib::dataset::CProcessorBase& processor);

// A processor that reads what another writes comes after it; others keep their order. None may be null. Throws
// CProcessingError when processors wait for each other in a circle, or two write the same channel.
Processors InRunOrder(const Processors& processors);

} // namespace veltaris::processing
