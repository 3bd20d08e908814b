#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"

#include "velflexlib/dataset/serialisers/InfoFlatSection.h"
#include "velflexlib/dataset/serialisers/InfoTreeSections.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CIniFileContent;

namespace {

constexpr const char* flatKey = "SetInfos";
constexpr int flatOnlyVersion = 1;

} // namespace

void CInfoSetToVELConfig::LoadFlat(int fileVersion, const std::atomic<bool>& abort)
{
    CIniFileContent& content = m_document.GetContent();
    content.SelectCreateSection(m_section);
    std::string list = content.GetActiveSection().GetValue(flatKey);
    if (list.empty() && fileVersion == flatOnlyVersion && content.SelectSection(flatKey))
        list = flatKey; // old files have the section, but may lack the key that names it
    if (list.empty())
        return;
    content.SelectCreateSection(list);
    LoadFlatInfo(m_infoSet, content.GetActiveSection(), fileVersion, abort);
}

void CInfoSetToVELConfig::LoadTree(const std::atomic<bool>& abort)
{
    LoadInfoTrees(m_infoSet, m_document, m_section, abort);
}

void CInfoSetToVELConfig::Save()
{
    if (velstdlib::util::IsWriteProtected(m_document.GetFileName()))
        velstdlib::util::ThrowWriteProtected(m_document.GetFileName());
    CInfoGroups flat;
    CInfoGroups trees;
    for (const auto& group : m_infoSet.GetGroups())
        (group->IsStoredFlat() ? flat : trees).push_back(group.get());
    const auto lines = FlatInfoLines(flat);
    if (!lines)
        trees.insert(trees.begin(), flat.begin(), flat.end());
    else if (!lines->empty())
        SaveFlat(*lines);
    SaveInfoTrees(trees, m_document, m_section);
}

void CInfoSetToVELConfig::SaveFlat(const std::vector<CInfoLine>& lines)
{
    CIniFileContent& content = m_document.GetContent();
    const std::string list = m_section + "-Info";
    content.SelectCreateSection(m_section);
    content.GetActiveSection().SetValue(flatKey, list);
    content.SelectCreateSection(list);
    for (const CInfoLine& line : lines) {
        if (!line.value.empty())
            content.GetActiveSection().SetValue(line.key, line.value);
    }
}

} // namespace veltaris::velflexlib::dataset
