#include "velflexlib/dataset/processors/ProcessorFactory.h"

#include "velflexlib/dataset/processors/Processors.h"
#include "velstdlib/util/ContainerHelper.h"

#include <map>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

using Factory = std::unique_ptr<CProcessorBase> (*)(std::uint64_t instanceNo);

template <class Processor>
std::unique_ptr<CProcessorBase> Create(std::uint64_t instanceNo)
{
    return std::make_unique<Processor>(instanceNo);
}

template <class Processor>
std::pair<const std::string, Factory> Entry()
{
    return {std::string(Processor::kind.guid), Create<Processor>};
}

const std::map<std::string, Factory> factories{Entry<CProcessorSlope>(), Entry<CProcessorMaxAdhesion>(),
                                               Entry<CProcessorIndentation>()};

} // namespace

std::unique_ptr<CProcessorBase> CreateProcessor(const std::string& guid, std::uint64_t instanceNo)
{
    return velstdlib::util::CheckedAt(factories, guid)(instanceNo);
}

} // namespace veltaris::velflexlib::dataset
