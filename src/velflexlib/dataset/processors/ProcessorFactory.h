// Makes processors by the identifiers of their classes.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veltaris::velflexlib::dataset {

// The identifier is compared exactly. Throws std::out_of_range "invalid map<K, T> key" for one that is no processor's.
std::unique_ptr<CProcessorBase> CreateProcessor(const std::string& guid, std::uint64_t instanceNo);

} // namespace veltaris::velflexlib::dataset
