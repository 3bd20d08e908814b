// Creates processors by the identifier that files have for their kind.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veltaris::velflexlib::dataset {

// The identifier must match exactly, including case and braces. Throws std::out_of_range "invalid map<K, T> key" if no
// kind of processor has it. Thread-safe.
std::unique_ptr<CProcessorBase> CreateProcessor(const std::string& guid, std::uint64_t instanceNo);

} // namespace veltaris::velflexlib::dataset
