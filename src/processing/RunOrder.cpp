#include "processing/RunOrder.h"

#include "processing/ProcessingError.h"

#include <algorithm>
#include <map>
#include <queue>

namespace veltaris::processing {

using velflexlib::dataset::CChannelAddress;
using velflexlib::dataset::CProcessorBase;

namespace {

// Which processors wait for which, by their positions.
class CDependencies
{
public:
    explicit CDependencies(const Processors& processors)
        : m_processors(processors), m_followers(processors.size()), m_waitsFor(processors.size())
    {
        for (std::size_t i = 0; i < processors.size(); ++i)
            AddOutputs(i);
        for (std::size_t i = 0; i < processors.size(); ++i)
            AddInputs(i);
    }

    Processors Order() const
    {
        std::vector<std::size_t> waiting;
        std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
        for (std::size_t i = 0; i < m_processors.size(); ++i) {
            waiting.push_back(m_waitsFor[i].size());
            if (waiting[i] == 0)
                ready.push(i);
        }
        Processors order;
        while (!ready.empty()) {
            const std::size_t next = ready.top();
            ready.pop();
            order.push_back(m_processors[next]);
            for (const std::size_t follower : m_followers[next]) {
                if (--waiting[follower] == 0)
                    ready.push(follower);
            }
        }
        if (order.size() < m_processors.size())
            ThrowCircle(waiting);
        return order;
    }

private:
    void AddOutputs(std::size_t position)
    {
        m_processors[position]->GetOutputs().ForEachAddress([&](std::uint64_t, const CChannelAddress& address) {
            const auto [writer, isNew] = m_writers.try_emplace(address, position);
            if (address.IsComplete() && !isNew)
                throw CProcessingError(NameOf(*m_processors[writer->second]) + " and " +
                                       NameOf(*m_processors[position]) + " both write channel " +
                                       std::to_string(address.channel) + " of group " + std::to_string(address.group));
        });
    }

    void AddInputs(std::size_t position)
    {
        m_processors[position]->GetInputs().ForEachAddress([&](std::uint64_t, const CChannelAddress& address) {
            const auto writer = m_writers.find(address);
            if (address.IsComplete() && writer != m_writers.end()) {
                m_waitsFor[position].push_back(writer->second);
                m_followers[writer->second].push_back(position);
            }
        });
    }

    // Each that still waits does so for one that still waits, so that going on from any of them ends in a circle.
    [[noreturn]] void ThrowCircle(const std::vector<std::size_t>& waiting) const
    {
        const auto isWaiting = [&](std::size_t position) { return waiting[position] > 0; };
        std::size_t at = 0;
        while (!isWaiting(at))
            ++at;
        std::vector<std::size_t> path;
        for (std::vector<bool> isPassed(waiting.size()); !isPassed[at];) {
            isPassed[at] = true;
            path.push_back(at);
            at = *std::ranges::find_if(m_waitsFor[at], isWaiting);
        }
        path.erase(path.begin(), std::ranges::find(path, at));
        ThrowNames(path);
    }

    [[noreturn]] void ThrowNames(const std::vector<std::size_t>& path) const
    {
        constexpr std::size_t most = 5;
        std::string text;
        for (std::size_t i = 0; i < std::min(path.size(), most); ++i)
            text.append(i == 0 ? "" : ", ").append(NameOf(*m_processors[path[i]]));
        text += path.size() > most ? " and others" : "";
        throw CProcessingError(
            text + (path.size() == 1 ? " reads what it writes itself" : " wait for each other's results in a circle"));
    }

    const Processors& m_processors;
    std::map<CChannelAddress, std::size_t> m_writers;
    std::vector<std::vector<std::size_t>> m_followers;
    std::vector<std::vector<std::size_t>> m_waitsFor;
};

} // namespace

std::string NameOf(const CProcessorBase& processor)
{
    return "\"" + processor.GetDisplayName() + "\" (" + processor.GetSectionName() + ")";
}

Processors InRunOrder(const Processors& processors)
{
    return CDependencies(processors).Order();
}

} // namespace veltaris::processing
