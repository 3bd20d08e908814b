#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/serialisers/DataBufferToVELConfig.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CHeaderSection;
using velstdlib::util::CVELConfig;
using Groups = std::vector<std::shared_ptr<CDataGroup>>;

namespace {

constexpr const char* viewSection = "SetView";

// Calls use(group, slot, buffer) for every filled slot, in the order of groups and slots.
template <class Use>
void ForEachChannel(const Groups& groups, Use use)
{
    for (std::size_t g = 0; g < groups.size(); ++g) {
        const std::size_t slotCount = groups[g]->GetChannelCount();
        for (std::size_t c = 0; c < slotCount; ++c) {
            if (const auto buffer = groups[g]->GetChannelBuffer(c))
                use(g, c, buffer);
        }
    }
}

void Clear(CDataSet& dataSet)
{
    dataSet.DeleteAllGroups();
    dataSet.GetInfoSet().DeleteAllGroups();
    dataSet.GetViewSet().Clear();
    dataSet.GetProcessorSet().Clear();
}

// Charges what the plan asks for. Every channel costs the text of its section: several may name one section, and a few
// letters for each could otherwise copy one long text a million times.
void Charge(const CDataSetPlan& plan, CVELConfig& document, const CHeaderSection& section, CLoadBudget& budget)
{
    for (std::size_t g = 0; g < plan.groups.size(); ++g) {
        if (!budget.TakeSlots(plan.groups[g].slotCount))
            section.ThrowBadContent(SlotCountKey(plan.version, g));
    }
    for (const auto& [group, slot, name] : plan.channels) {
        const auto found = document.SelectSection(name);
        if (!budget.TakeSection(found ? found->keys.GetTextBytes() : 0))
            section.ThrowBadContent(ChannelKey(plan.version, group, slot));
    }
}

void RethrowIfAny(const std::exception_ptr& failure)
{
    if (failure)
        std::rethrow_exception(failure);
}

// Lines of a channel without samples, and lines that a file promised but did not hold: nothing but numbers.
std::uint64_t LinesThatCostNothing(const CDataBuffer& buffer)
{
    return buffer.GetStoredSampleCount() == 0 ? buffer.GetLines() : buffer.GetMissingLineCount();
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

// Both versions are loaded in the same steps; the older one names its groups by their channels, which come last.
void CDataSetToVELConfig::LoadHeader(CVELConfig& document, const std::string& sectionName,
                                     const std::atomic<bool>& abort)
try {
    ReleaseNotifications();
    m_version = 0;
    Clear(m_dataSet);
    const CHeaderSection section = document.SelectCreateSection(sectionName);
    CDataSetPlan plan = ReadDataSetSection(section);
    CLoadBudget budget(document.GetHeaderBytes());
    Charge(plan, document, section, budget);
    m_version = plan.version;
    m_bytesLeft = document.GetDataBytes();

    if (m_version == framesVersion) {
        LoadInformation(document, sectionName, abort);
        m_dataSet.GetViewSet().ReadFromFile(document, viewSection);
        BuildGroups(plan, abort);
        LoadChannels(plan, document, section, budget, abort);
        NameGroups(abort);
    } else {
        BuildGroups(plan, abort);
        LoadChannels(plan, document, section, budget, abort);
        LoadInformation(document, sectionName, abort);
        m_dataSet.GetViewSet().ReadFromFile(document, viewSection);
        LoadProcessors(document);
    }
    if (abort)
        RethrowIfAny(ReleaseNotifications());
} catch (...) {
    ReleaseNotifications();
    throw;
}

// Drops the plan of each group once it is built: a file may have so many that both together take too much memory.
void CDataSetToVELConfig::BuildGroups(CDataSetPlan& plan, const std::atomic<bool>& abort)
{
    for (std::uint64_t g = 0; !plan.groups.empty() && !abort; ++g) {
        const CPlannedGroup& group = plan.groups.front();
        const std::uint32_t id = group.logicalId ? *group.logicalId : m_dataSet.TakeLogicalGroupId();
        m_dataSet.ReserveLogicalGroupId(id);
        m_dataSet.InsertGroup(g, id, group.name, group.slotCount, m_bitCount);
        plan.groups.pop_front();
    }
}

void CDataSetToVELConfig::LoadChannels(const CDataSetPlan& plan, CVELConfig& document, const CHeaderSection& section,
                                       CLoadBudget& budget, const std::atomic<bool>& abort)
{
    const Groups groups = m_dataSet.GetAllGroups();
    m_channels.reserve(plan.channels.size());
    for (const auto& [group, slot, name] : plan.channels) {
        if (abort || group >= groups.size())
            return;
        if (name.empty())
            section.ThrowBadContent(ChannelKey(plan.version, group, slot));
        m_channels.push_back(groups[group]->GetOrCreateChannelBuffer(slot, 0, 0));
        CDataBufferToVELConfig(*m_channels.back()).LoadHeader(document.SelectCreateSection(name), budget);
    }
}

void CDataSetToVELConfig::NameGroups(const std::atomic<bool>& abort)
{
    for (const auto& group : m_dataSet.GetAllGroups()) {
        if (!abort)
            NameFrameGroup(*group);
    }
}

void CDataSetToVELConfig::LoadInformation(CVELConfig& document, const std::string& sectionName,
                                          const std::atomic<bool>& abort)
{
    CInfoSetToVELConfig info(m_dataSet.GetInfoSet(), document, sectionName);
    info.LoadFlat(m_version, abort);
    if (m_version != framesVersion)
        info.LoadTree(abort);
}

void CDataSetToVELConfig::LoadProcessors(CVELConfig& document)
{
    m_dataSet.GetProcessorSet().ReadFromFile(document);
    m_dataSet.GetProcessorSet().Connect([this](std::uint64_t group, std::uint64_t channel) {
        const auto found = m_dataSet.GetGroup(group);
        return found ? found->GetChannelBuffer(channel) : nullptr;
    });
}

void CDataSetToVELConfig::LoadData(std::istream& stream, const std::atomic<bool>& abort)
try {
    if (m_version == 0)
        velstdlib::util::ThrowFileVersion({}, m_version);
    for (std::size_t c = 0; c < m_channels.size() && !abort; ++c)
        CDataBufferToVELConfig(*m_channels[c]).LoadData(stream, m_bytesLeft, abort);
    RethrowIfAny(ReleaseNotifications());
    m_dataSet.SetModified(false);
    m_dataSet.GetInfoSet().SetModified(false);
} catch (...) {
    ReleaseNotifications();
    throw;
}

std::exception_ptr CDataSetToVELConfig::ReleaseNotifications() noexcept
{
    std::exception_ptr first;
    for (const auto& buffer : std::exchange(m_channels, {})) {
        try {
            buffer->ReleaseNotifications();
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    }
    return first;
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
        linesWithoutSamples += LinesThatCostNothing(*buffer);
    });
    if (slots > limits::channelSlots)
        velstdlib::util::ThrowFileSave(fileName, velstdlib::string::TextId::TooManySlotsForFile);
    if (linesWithoutSamples > limits::pointlessLines)
        velstdlib::util::ThrowFileSave(fileName, velstdlib::string::TextId::TooManyPointlessLines);
}

void CDataSetToVELConfig::SaveHeader(CVELConfig& document, const std::string& sectionName)
{
    const Groups groups = m_dataSet.GetAllGroups();
    document.GetContent().SelectCreateSection(sectionName);
    WriteDataSetSection(document.GetContent().GetActiveSection(), sectionName, groups);
    CInfoSetToVELConfig(m_dataSet.GetInfoSet(), document, sectionName).Save();
    m_channelsToSave.clear();
    m_transferBuffer.clear();
    ForEachChannel(groups, [&](std::size_t g, std::size_t c, const auto& buffer) {
        CDataBufferToVELConfig(*buffer).SaveHeader(document, ChannelSectionName(sectionName, g, c));
        m_channelsToSave.push_back(buffer);
        m_transferBuffer.resize(std::max(m_transferBuffer.size(), CDataBufferToVELConfig(*buffer).TransferBytes()));
    });
}

void CDataSetToVELConfig::SaveData(velstdlib::util::CFileWriter& file)
{
    for (const auto& buffer : m_channelsToSave)
        CDataBufferToVELConfig(*buffer).SaveData(file, m_transferBuffer);
    m_dataSet.SetModified(false);
    m_dataSet.GetInfoSet().SetModified(false);
}

} // namespace veltaris::velflexlib::dataset
