#include "velflexlib/dataset/processors/ProcessorSet.h"

#include "velflexlib/dataset/processors/ProcessorFactory.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/ListCount.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CIniFileContent;
using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

// Reads each section and makes each processor once: a file can name them as often as it likes.
class CEntryReader
{
public:
    CEntryReader(CIniFileContent& content, std::vector<std::unique_ptr<CProcessorBase>>& processors)
        : m_content(content), m_processors(processors)
    {
    }

    // Null when the section names no processor.
    CProcessorBase* Read(std::string_view section)
    {
        if (!m_content.SelectSection(section))
            return nullptr;
        const CVELKeyToValueList& keys = m_content.GetActiveSection();
        const auto [known, isNew] = m_bySection.try_emplace(&keys);
        if (isNew)
            known->second = ReadKeys(keys);
        return known->second;
    }

private:
    CProcessorBase* ReadKeys(const CVELKeyToValueList& keys)
    {
        const std::string guid = keys.GetValue("GUID");
        const auto instanceNo = keys.GetValueT<std::uint64_t>("InstanceNo", noIndex);
        if (guid.empty() || instanceNo == noIndex)
            return nullptr;
        CProcessorBase*& known = m_byIdentity[{guid, instanceNo}];
        if (!known)
            known = m_processors.emplace_back(CreateProcessor(guid, instanceNo)).get();
        return known;
    }

    CIniFileContent& m_content;
    std::vector<std::unique_ptr<CProcessorBase>>& m_processors;
    std::unordered_map<const CVELKeyToValueList*, CProcessorBase*> m_bySection;
    std::map<std::pair<std::string, std::uint64_t>, CProcessorBase*> m_byIdentity;
};

} // namespace

void CProcessorSet::ReadFromFile(CVELConfig& document)
{
    Clear();
    CIniFileContent& content = document.GetContent();
    if (!content.SelectSection("ProcessorSet"))
        return;
    const CVELKeyToValueList& keys = content.GetActiveSection();
    const auto count = static_cast<std::uint64_t>(std::max(keys.GetValueT<int>("ProcessorCount", 0), 0));
    if (count > velstdlib::util::limits::processors)
        velstdlib::util::ThrowBadContent(document.GetFileName());
    CEntryReader reader(content, m_processors);
    for (const auto& [index, section] : ReadNumberedValues(keys, "Processor", count)) {
        if (CProcessorBase* const processor = reader.Read(section))
            m_entries.push_back(processor);
    }
    for (const auto& processor : m_processors)
        processor->LoadParameters(document);
}

void CProcessorSet::Connect(const ChannelLookup& lookup)
{
    for (const auto& processor : m_processors)
        processor->Connect(lookup);
}

void CProcessorSet::Clear()
{
    m_entries.clear();
    m_processors.clear();
}

} // namespace veltaris::velflexlib::dataset
