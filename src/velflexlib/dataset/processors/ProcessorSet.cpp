#include "velflexlib/dataset/processors/ProcessorSet.h"

#include "velflexlib/dataset/processors/ProcessorFactory.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/header/ListCount.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr const char* listSection = "ProcessorSet";
constexpr std::string_view entryPrefix = "Processor";

struct CEntry
{
    std::string guid; // empty: the section names no processor
    std::uint64_t instanceNo = 0;
};

// Makes a processor of each entry. Each section is read once, because a file can name one as often as it likes.
class CEntryReader
{
public:
    explicit CEntryReader(CVELConfig& document) : m_document(document) {}

    // Null when the section names no processor.
    std::unique_ptr<CProcessorBase> Read(std::string_view name)
    {
        const auto section = m_document.SelectSection(name);
        if (!section)
            return nullptr;
        const auto [known, isNew] = m_known.try_emplace(&section->keys);
        if (isNew)
            known->second = ReadEntry(section->keys);
        const CEntry& entry = known->second;
        return entry.guid.empty() ? nullptr : CreateProcessor(entry.guid, entry.instanceNo);
    }

private:
    static CEntry ReadEntry(const CVELKeyToValueList& keys)
    {
        const auto instanceNo = keys.GetValueT<std::uint64_t>("InstanceNo", noIndex);
        return {instanceNo == noIndex ? std::string() : keys.GetValue("GUID"), instanceNo};
    }

    CVELConfig& m_document;
    std::unordered_map<const CVELKeyToValueList*, CEntry> m_known;
};

// The text of parameter sections that processors may still take. Each processor has parameters of its own, even where
// several have one section: without this limit, a few letters for each could copy one long list many thousand times.
class CParameterBudget
{
public:
    explicit CParameterBudget(CVELConfig& document)
        : m_document(document), m_bytes(document.GetHeaderBytes() + velstdlib::util::limits::sharedParameterBytes)
    {
    }

    bool Take(const CProcessorBase& processor)
    {
        const std::string name = processor.GetSectionName();
        const auto section = m_document.SelectSection(name);
        const std::uint64_t bytes = section ? section->keys.GetTextBytes() : 0;
        if (bytes > m_bytes)
            return false;
        m_bytes -= bytes;
        return true;
    }

private:
    CVELConfig& m_document;
    std::uint64_t m_bytes;
};

} // namespace

void CProcessorSet::ReadFromFile(CVELConfig& document)
{
    Clear();
    const auto list = document.SelectSection(listSection);
    if (!list)
        return;
    const auto count = velstdlib::util::ReadListCount<int>(*list, std::string(entryPrefix) + "Count",
                                                           velstdlib::util::limits::processors);
    CEntryReader reader(document);
    CParameterBudget budget(document);
    for (const auto& [index, section] : ReadNumberedValues(list->keys, entryPrefix, count)) {
        auto processor = reader.Read(section);
        if (!processor)
            continue;
        if (!budget.Take(*processor))
            list->ThrowBadContent(std::string(entryPrefix).append(std::to_string(index)));
        m_processors.push_back(std::move(processor));
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
    m_processors.clear();
}

} // namespace veltaris::velflexlib::dataset
