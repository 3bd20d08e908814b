#include "processing/Processing.h"

#include "processing/ProcessingError.h"

#include <set>
#include <utility>

namespace veltaris::processing {

namespace dataset = velflexlib::dataset;
using dataset::CChannelAddress;
using dataset::CDataBuffer;
using dataset::CProcessorBase;

namespace {

std::string Named(const CChannelAddress& address)
{
    const auto number = [](std::uint64_t index) {
        return index == dataset::noIndex ? std::string("unknown") : std::to_string(index);
    };
    return "channel " + number(address.channel) + " of group " + number(address.group);
}

class CRun
{
public:
    CRun(dataset::CDataSet& dataSet, const CWatch& watch) : m_dataSet(dataSet), m_watch(watch), m_placement(dataSet) {}

    void Run(const CProcessorBase& processor)
    {
        if (processor.GetInputs().GetCount() == 0)
            m_report.problems.push_back(NameOf(processor) + ": it has no input");
        processor.GetInputs().ForEachAddress([&](std::uint64_t input, const CChannelAddress& address) {
            try {
                Run(processor, input, address);
            } catch (const CProcessingError& error) {
                m_report.problems.push_back(NameOf(processor) + ", " + Named(address) + ": " + error.what());
            }
        });
    }

    CProcessingReport TakeReport() { return std::move(m_report); }

private:
    // The input is held, so that it stays even if its slot is given away.
    void Run(const CProcessorBase& processor, std::uint64_t input, const CChannelAddress& address)
    {
        if (m_watch.abort)
            return;
        const std::shared_ptr<CDataBuffer> channel = m_placement.Find(address);
        if (!channel)
            throw CProcessingError("its input is not there");
        CProcessed done{&processor, address, Derive(processor, *channel, m_dataSet.GetInfoSet(), m_watch), {}};
        m_report.isAborted = m_watch.abort;
        if (m_report.isAborted)
            return;
        for (std::uint64_t i = 0; i < done.channels.size(); ++i)
            done.places.push_back(Keep(processor, input * done.channels.size() + i, *channel, done.channels[i]));
        m_report.done.push_back(std::move(done));
    }

    CPlace Keep(const CProcessorBase& processor, std::uint64_t output, const CDataBuffer& input, CDerived& derived)
    {
        const CPlace place = m_placement.Place(processor.GetOutputs().GetAddress(output));
        CDataBuffer& channel = *m_dataSet.GetGroup(place.group)->GetChannelBuffer(place.slot);
        std::visit([&](const auto& kept) { Store(kept, input, channel); }, derived);
        if (auto* const derivedCurves = std::get_if<CDerivedCurves>(&derived))
            derivedCurves->samples = {};
        return place;
    }

    dataset::CDataSet& m_dataSet;
    const CWatch& m_watch;
    CPlacement m_placement;
    CProcessingReport m_report;
};

} // namespace

Processors EnabledProcessors(const dataset::CProcessorSet& set)
{
    Processors enabled;
    std::set<std::string> sections;
    for (const auto& processor : set.GetProcessors()) {
        if (processor->IsEnabled() && sections.insert(processor->GetSectionName()).second)
            enabled.push_back(processor.get());
    }
    return enabled;
}

CProcessingReport Run(const Processors& processors, dataset::CDataSet& dataSet, const CWatch& watch)
{
    CRun run(dataSet, watch);
    for (const CProcessorBase* const processor : InRunOrder(processors))
        run.Run(*processor);
    return run.TakeReport();
}

std::uint64_t CountLines(const Processors& processors, const dataset::CDataSet& dataSet)
{
    std::uint64_t lines = 0;
    for (const CProcessorBase* const processor : processors) {
        processor->GetInputs().ForEachAddress([&](std::uint64_t, const CChannelAddress& address) {
            const auto group = dataSet.GetGroup(address.group);
            const auto channel = group ? group->GetChannelBuffer(address.channel) : nullptr;
            lines += channel ? channel->GetLines() : 0;
        });
    }
    return lines;
}

} // namespace veltaris::processing
