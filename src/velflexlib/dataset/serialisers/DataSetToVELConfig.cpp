#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/serialisers/DataBufferToVELConfig.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <string_view>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;
using Groups = std::vector<std::shared_ptr<CDataGroup>>;

namespace {

constexpr const char* viewSection = "SetView";
constexpr int framesVersion = 1; // channels of frames, samples channel by channel
constexpr int groupsVersion = 2; // groups of channels, samples group by group

CVELKeyToValueList& Select(CVELConfig& document, const std::string& section)
{
    document.GetContent().SelectCreateSection(section);
    return document.GetContent().GetActiveSection();
}

// Calls use(group, slot, buffer) for every filled slot, in the order of groups and slots, until it answers false.
template <class Use>
void ForEachChannel(const Groups& groups, Use use)
{
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const std::size_t slotCount = groups[g]->GetChannelCount();
        for (std::size_t c = 0; c < slotCount; ++c) {
            const auto buffer = groups[g]->GetChannelBuffer(c);
            if (buffer && !use(g, c, buffer))
                return;
        }
    }
}

void LoadChannel(CVELConfig& document, CDataGroup& group, std::size_t slot, std::string_view channelSection,
                 CLoadBudget& budget)
{
    const auto buffer = group.GetOrCreateChannelBuffer(slot, 0, 0);
    CDataBufferToVELConfig(*buffer).LoadHeader(document, channelSection, budget);
}

// The last channel of a frame names its group, and the last one of a well-known name gives it its logical id.
void NameFrameGroup(CDataGroup& group)
{
    for (const auto& buffer : group.GetChannelBuffers()) {
        if (!buffer)
            continue;
        const std::string name = buffer->GetGroupName();
        group.SetNameOnly(name);
        if (const auto id = LogicalIdOfWellKnownName(name))
            group.SetLogicalGroupId(*id);
    }
}

} // namespace

void CDataSetToVELConfig::LoadHeader(CVELConfig& document, const std::string& section, const std::atomic<bool>& abort)
{
    m_dataSet.DeleteAllGroups();
    m_dataSet.GetInfoSet().DeleteAllGroups();
    m_dataSet.GetViewSet().Clear();
    m_dataSet.GetProcessorSet().Clear();
    m_version = Select(document, section).GetValueT<int>("Version", framesVersion);
    switch (m_version) {
    case framesVersion:
        return LoadVersion1Header(document, section, abort);
    case groupsVersion:
        return LoadVersion2Header(document, section, abort);
    default:
        velstdlib::util::ThrowFileVersion(document.GetFileName(), m_version);
    }
}

void CDataSetToVELConfig::LoadVersion1Header(CVELConfig& document, const std::string& section,
                                             const std::atomic<bool>& abort)
{
    const CVELKeyToValueList& keys = Select(document, section);
    const CFrameList frames = ReadFrameList(keys, document.GetFileName());
    CLoadBudget budget(document);
    budget.ChargeSlots(frames.SlotCount());
    budget.CheckSections(frames.SlotCount());
    CInfoSetToVELConfig(m_dataSet.GetInfoSet(), document, section).LoadFlat(m_version, abort);
    m_dataSet.GetViewSet().ReadFromFile(document, viewSection);

    Groups groups;
    for (std::uint64_t f = 0; f < frames.frameCount; ++f) {
        const auto id = static_cast<std::uint32_t>(f);
        m_dataSet.ReserveLogicalGroupId(id);
        groups.push_back(m_dataSet.InsertGroup(f, id, section, frames.channelCount, m_bitCount));
    }
    for (std::size_t c = 0; c < frames.channelCount; ++c) {
        for (std::size_t f = 0; f < frames.frameCount && !abort; ++f)
            LoadChannel(document, *groups[f], c, ReadFrameChannel(keys, c, f, document.GetFileName()), budget);
    }
    for (const auto& group : groups) {
        if (!abort)
            NameFrameGroup(*group);
    }
}

void CDataSetToVELConfig::LoadVersion2Header(CVELConfig& document, const std::string& section,
                                             const std::atomic<bool>& abort)
{
    const CVELKeyToValueList& keys = Select(document, section);
    const std::uint64_t groupCount = ReadGroupCount(keys, document.GetFileName());
    CLoadBudget budget(document);

    Groups groups;
    groups.reserve(groupCount);
    for (std::uint64_t g = 0; g < groupCount && !abort; ++g) {
        const CGroupKeys group = ReadGroupKeys(keys, g);
        budget.ChargeSlots(group.slotCount);
        const std::uint32_t id = group.logicalId ? *group.logicalId : m_dataSet.TakeLogicalGroupId();
        m_dataSet.ReserveLogicalGroupId(id);
        groups.push_back(m_dataSet.InsertGroup(g, id, group.name, group.slotCount, m_bitCount));
    }
    for (const auto& [g, slot, channelSection] : ReadGroupChannels(keys)) {
        if (!abort && g < groups.size() && slot < groups[g]->GetChannelCount())
            LoadChannel(document, *groups[g], slot, channelSection, budget);
    }
    CInfoSetToVELConfig info(m_dataSet.GetInfoSet(), document, section);
    info.LoadFlat(m_version, abort);
    info.LoadTree(abort);
    LoadViewsAndProcessors(document);
}

void CDataSetToVELConfig::LoadViewsAndProcessors(CVELConfig& document)
{
    m_dataSet.GetViewSet().ReadFromFile(document, viewSection);
    m_dataSet.GetProcessorSet().ReadFromFile(document);
    m_dataSet.GetProcessorSet().Connect([this](std::uint64_t group, std::uint64_t channel) {
        const auto found = m_dataSet.GetGroup(group);
        return found ? found->GetChannelBuffer(channel) : nullptr;
    });
}

void CDataSetToVELConfig::LoadData(std::istream& stream, const std::atomic<bool>& abort)
{
    const auto load = [&](CDataBuffer& buffer) {
        if (!abort)
            CDataBufferToVELConfig(buffer).LoadData(stream, abort);
        return !abort;
    };
    const Groups groups = m_dataSet.GetAllGroups();
    switch (m_version) {
    case framesVersion:
        for (std::size_t c = 0; !groups.empty() && c < groups.front()->GetChannelCount(); ++c) {
            for (const auto& group : groups) {
                if (const auto buffer = group->GetChannelBuffer(c))
                    load(*buffer);
            }
        }
        break;
    case groupsVersion:
        ForEachChannel(groups, [&](std::size_t, std::size_t, const auto& buffer) { return load(*buffer); });
        break;
    default:
        velstdlib::util::ThrowFileVersion({}, m_version);
    }
    m_dataSet.SetModified(false);
    m_dataSet.GetInfoSet().SetModified(false);
}

void CDataSetToVELConfig::CheckSavable(const std::string& fileName) const
{
    namespace limits = velstdlib::util::limits;
    const Groups groups = m_dataSet.GetAllGroups();
    std::uint64_t slots = 0;
    for (const auto& group : groups)
        slots += group->GetChannelCount();
    std::uint64_t linesWithoutSamples = 0;
    ForEachChannel(groups, [&](std::size_t, std::size_t, const auto& buffer) {
        WidthOfBits(buffer->GetBitCount());
        linesWithoutSamples += buffer->GetStoredSampleCount() == 0 ? buffer->GetLines() : 0;
        return true;
    });
    if (slots > limits::channelSlots)
        velstdlib::util::ThrowFileSave(fileName, velstdlib::string::TextId::TooManySlotsForFile);
    if (linesWithoutSamples > limits::pointlessLines)
        velstdlib::util::ThrowFileSave(fileName, velstdlib::string::TextId::TooManyPointlessLines);
}

void CDataSetToVELConfig::SaveHeader(CVELConfig& document, const std::string& section)
{
    const Groups groups = m_dataSet.GetAllGroups();
    CVELKeyToValueList& keys = Select(document, section);
    keys.SetValue("Version", groupsVersion);
    keys.SetValue("GroupCount", groups.size());
    for (std::size_t g = 0; g < groups.size(); ++g)
        WriteGroupKeys(keys, g, *groups[g]);
    ForEachChannel(groups, [&](std::size_t g, std::size_t c, const auto&) {
        keys.SetValue(GroupChannelKey(g, c), ChannelSectionName(section, g, c));
        return true;
    });
    CInfoSetToVELConfig(m_dataSet.GetInfoSet(), document, section).Save();
    m_channelsToSave.clear();
    m_roomToSave.clear();
    ForEachChannel(groups, [&](std::size_t g, std::size_t c, const auto& buffer) {
        CDataBufferToVELConfig(*buffer).SaveHeader(document, ChannelSectionName(section, g, c));
        m_channelsToSave.push_back(buffer);
        m_roomToSave.resize(std::max(m_roomToSave.size(), CDataBufferToVELConfig(*buffer).RoomToSave()));
        return true;
    });
}

void CDataSetToVELConfig::SaveData(velstdlib::util::CFileWriter& file)
{
    for (const auto& buffer : m_channelsToSave)
        CDataBufferToVELConfig(*buffer).SaveData(file, m_roomToSave);
    m_dataSet.SetModified(false);
    m_dataSet.GetInfoSet().SetModified(false);
}

} // namespace veltaris::velflexlib::dataset
