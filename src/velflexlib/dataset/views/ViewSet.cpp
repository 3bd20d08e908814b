#include "velflexlib/dataset/views/ViewSet.h"

#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/ListCount.h"

#include <string_view>
#include <unordered_map>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr int latestVersion = 1;

// Reads each section only once, because a file can name the same section any number of times.
class CViewReader
{
public:
    explicit CViewReader(CVELConfig& document) : m_document(document) {}

    const std::shared_ptr<const CView>& DefaultView() const { return m_defaultView; }

    std::shared_ptr<const CView> Read(std::string_view section)
    {
        const auto found = m_document.SelectSection(section);
        if (!found)
            return m_defaultView;
        std::shared_ptr<const CView>& known = m_known[&found->keys];
        if (!known) {
            CView view;
            view.Read(*found);
            known = std::make_shared<const CView>(std::move(view));
        }
        return known;
    }

private:
    CVELConfig& m_document;
    const std::shared_ptr<const CView> m_defaultView = std::make_shared<const CView>();
    std::unordered_map<const CVELKeyToValueList*, std::shared_ptr<const CView>> m_known;
};

} // namespace

void CViewSet::ReadFromFile(CVELConfig& document, const std::string& sectionName)
{
    Clear();
    const auto list = document.SelectCreateSection(sectionName);
    const CVELKeyToValueList& keys = list.keys;
    const int version = keys.GetValueT<int>("Version", latestVersion);
    if (version > latestVersion)
        velstdlib::util::ThrowFileVersion(document.GetFileName(), version);
    m_width = keys.GetValueT<int>("ViewWidth", m_width);
    m_height = keys.GetValueT<int>("ViewHeight", m_height);
    const auto count = velstdlib::util::ReadListCount<std::uint64_t>(list, "ViewCount", velstdlib::util::limits::views);
    CViewReader reader(document);
    m_views.assign(count, reader.DefaultView());
    for (const auto& [index, section] : ReadNumberedValues(keys, "View", count))
        m_views[index] = reader.Read(section);
}

void CViewSet::Clear()
{
    m_views.clear();
}

} // namespace veltaris::velflexlib::dataset
