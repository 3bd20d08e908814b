#include "oxd/info/ViewInfo.h"

#include "oxd/inspection/UntilNul.h"

#include <map>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;

// The groups of a file by their positions, as links name them.
class LinkReader
{
public:
    explicit LinkReader(const inspect::Inspection& inspection) : m_groups(inspection.dataSet->GetAllGroups()) {}

    LinkInfo Read(std::uint64_t index, const model::CChannelAddress& address) const
    {
        LinkInfo link{index, Present(address.group), Present(address.channel), {}, {}};
        if (address.group >= m_groups.size()) {
            return link;
        }
        const model::CDataGroup& group = *m_groups[address.group];
        link.groupName = UntilNul(group.GetName());
        if (const auto channel = group.GetChannelBuffer(address.channel)) {
            link.channelName = UntilNul(channel->GetAxisName(model::signalAxis));
        }
        return link;
    }

    std::vector<LinkInfo> Read(const model::CChannelLinks& links) const
    {
        std::vector<LinkInfo> infos;
        links.ForEachAddress(
            [&](std::uint64_t index, const model::CChannelAddress& address) { infos.push_back(Read(index, address)); });
        return infos;
    }

private:
    static std::optional<std::uint64_t> Present(std::uint64_t index)
    {
        return index == model::noIndex ? std::nullopt : std::optional(index);
    }

    std::vector<std::shared_ptr<model::CDataGroup>> m_groups;
};

std::uint64_t ToIndex(int number)
{
    return number < 0 ? model::noIndex : static_cast<std::uint64_t>(number);
}

ViewInfo ToInfo(const model::CView& view, const LinkReader& links)
{
    ViewInfo info{.channel = links.Read(0, {ToIndex(view.frame), ToIndex(view.channel)}),
                  .kind = static_cast<int>(view.id),
                  .mode = static_cast<int>(view.viewMode),
                  .graphMode = static_cast<int>(view.graphMode),
                  .size = view.size,
                  .aspectRatio = view.aspectRatio,
                  .lineOperator = model::LineOpCodes().map(view.lineOp)};
    if (!view.autoZRange) {
        info.range = view.zRange;
    }
    for (std::size_t code = 0; code < view.lineOpParameters.size(); ++code) {
        for (const auto& [name, value] : view.lineOpParameters[code]) {
            info.parameters.emplace_back(static_cast<int>(code), std::string(name).append("=").append(value));
        }
    }
    return info;
}

ProcessorInfo ToInfo(const model::CProcessorBase& processor, const LinkReader& links)
{
    ProcessorInfo info{.kind = std::string(processor.GetKind().typeName),
                       .instance = processor.GetInstanceNo(),
                       .name = UntilNul(processor.GetDisplayName()),
                       .isEnabled = processor.IsEnabled(),
                       .inputs = links.Read(processor.GetInputs()),
                       .outputs = links.Read(processor.GetOutputs())};
    for (std::size_t i = 0; i < processor.GetKind().parameters.size(); ++i) {
        const auto& [value, unit] = processor.GetParameter(i);
        info.parameters.push_back({std::string(processor.GetKind().parameters[i].key), value, UntilNul(unit),
                                   processor.GetWritten(i).has_value()});
    }
    return info;
}

// Makes one of all that have the same key, in the order of their first positions.
template <typename Info, typename Things, typename KeyOf>
std::vector<Info> Distinct(const Things& things, const LinkReader& links, KeyOf keyOf)
{
    std::vector<Info> infos;
    std::map<decltype(keyOf(*things.front())), std::size_t> known;
    for (std::uint64_t position = 0; position < things.size(); ++position) {
        const auto [found, isNew] = known.try_emplace(keyOf(*things[position]), infos.size());
        if (isNew) {
            infos.push_back(ToInfo(*things[position], links));
        }
        infos[found->second].positions.push_back(position);
    }
    return infos;
}

} // namespace

ViewArea ReadViews(const inspect::Inspection& inspection)
{
    const model::CViewSet& set = inspection.dataSet->GetViewSet();
    return {set.GetWidth(), set.GetHeight(),
            Distinct<ViewInfo>(set.GetViews(), LinkReader(inspection), [](const model::CView& view) { return &view; })};
}

std::vector<ProcessorInfo> ReadProcessors(const inspect::Inspection& inspection)
{
    return Distinct<ProcessorInfo>(inspection.dataSet->GetProcessorSet().GetProcessors(), LinkReader(inspection),
                                   [](const model::CProcessorBase& processor) { return processor.GetSectionName(); });
}

std::string LinkText(const LinkInfo& link)
{
    if (link.channelName) {
        return *link.groupName + "/" + *link.channelName;
    }
    const auto number = [](const std::optional<std::uint64_t>& index) {
        return index ? std::to_string(*index) : std::string("unknown");
    };
    return "group " + number(link.group) + ", channel " + number(link.channel) + " (not there)";
}

} // namespace oxd
