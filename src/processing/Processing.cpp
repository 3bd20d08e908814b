#include "processing/Processing.h"

#include "processing/Parameters.h"
#include "processing/ProcessingError.h"

#include <algorithm>
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

CPlacement::Addresses OutputsOf(const Processors& processors, const CPlacement::Addresses& unreserved)
{
    CPlacement::Addresses outputs;
    for (const CProcessorBase* const processor : processors)
        processor->GetOutputs().ForEachAddress([&](std::uint64_t, const CChannelAddress& address) {
            if (!unreserved.contains(address))
                outputs.insert(address);
        });
    return outputs;
}

class CRun
{
public:
    CRun(const Processors& processors, dataset::CDataSet& dataSet, const CWatch& watch,
         const CPlacement::Addresses& unreserved)
        : m_dataSet(dataSet), m_watch(watch), m_placement(dataSet, OutputsOf(processors, unreserved))
    {
    }

    void Run(const CProcessorBase& processor)
    {
        for (const auto& [key, text] : processor.GetUnreadable())
            m_report.problems.push_back(
                NameOf(processor).append(": ").append(key).append(" \"").append(text).append("\" makes no sense"));
        if (!processor.GetUnreadable().empty())
            return;
        if (processor.GetInputs().GetCount() == 0)
            m_report.problems.push_back(NameOf(processor) + ": it has no input");
        processor.GetInputs().ForEachAddress([&](std::uint64_t input, const CChannelAddress& address) {
            try {
                Run(processor, input, address);
            } catch (const CParameterError& error) {
                m_report.unsuited.emplace_back(error.Key(), error.what());
                AddProblem(processor, address, error);
            } catch (const CProcessingError& error) {
                AddProblem(processor, address, error);
            }
        });
    }

    CProcessingReport TakeReport()
    {
        m_report.gaps = m_placement.Gaps();
        return std::move(m_report);
    }

private:
    void AddProblem(const CProcessorBase& processor, const CChannelAddress& input, const CProcessingError& error)
    {
        m_report.problems.push_back(NameOf(processor) + ", " + Named(input) + ": " + error.what());
    }

    // The input is held, so that it stays even if its slot is given away.
    void Run(const CProcessorBase& processor, std::uint64_t input, const CChannelAddress& address)
    {
        if (m_watch.abort)
            return;
        const CPlace place = m_placement.Find(address);
        const std::shared_ptr<CDataBuffer> channel = m_placement.ChannelAt(place);
        if (!channel)
            throw CProcessingError("its input is not there");
        NoteUnusableItems(processor, *channel);
        CProcessed done{&processor, place, Derive(processor, *channel, m_dataSet.GetInfoSet(), m_watch), {}};
        m_report.isAborted = m_watch.abort;
        if (m_report.isAborted)
            return;
        for (std::uint64_t i = 0; i < done.channels.size(); ++i)
            done.places.push_back(Keep(processor, input * done.channels.size() + i, *channel, done.channels[i]));
        m_report.done.push_back(std::move(done));
    }

    // An item is told once, however many processors look for it.
    void NoteUnusableItems(const CProcessorBase& processor, const CDataBuffer& channel)
    {
        const auto* const force = dynamic_cast<const dataset::CForceProcessor*>(&processor);
        if (force == nullptr)
            return;
        for (std::string& sentence : UnusableItems(*force, channel, m_dataSet.GetInfoSet()))
            if (std::ranges::find(m_report.notes, sentence) == m_report.notes.end())
                m_report.notes.push_back(std::move(sentence));
    }

    CPlace Keep(const CProcessorBase& processor, std::uint64_t output, const CDataBuffer& input, CDerived& derived)
    {
        const CChannelAddress address = processor.GetOutputs().GetAddress(output);
        const CPlace place = m_placement.Place(address);
        if (address != CChannelAddress() && place != CPlace{address.group, address.channel})
            m_report.notes.push_back(NameOf(processor) + ": its output " + std::to_string(output) + " is not " +
                                     Named(address) + ", which is measured or out of reach, but " +
                                     Named({place.group, place.slot}));
        CDataBuffer& channel = *m_placement.ChannelAt(place);
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

CProcessingReport Run(const Processors& processors, dataset::CDataSet& dataSet, const CWatch& watch,
                      const CPlacement::Addresses& unreserved)
{
    CRun run(processors, dataSet, watch, unreserved);
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
