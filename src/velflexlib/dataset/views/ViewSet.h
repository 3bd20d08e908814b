// The views that the acquiring application has opened on a data set.
#pragma once

#include "velflexlib/dataset/views/View.h"
#include "velstdlib/util/header/VELConfig.h"

#include <memory>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Read only: files are written without views.
class CViewSet
{
public:
    using Views = std::vector<std::shared_ptr<const CView>>;

    CViewSet() = default;
    CViewSet(const CViewSet&) = delete;
    CViewSet& operator=(const CViewSet&) = delete;
    ~CViewSet() = default;

    // Replaces the views by those that the section lists. The size of the view area stays when the section gives none.
    // Throws CVELFileVersionException for a version above 1, CVELFileBadContentException for too many views, and what
    // CView::Read throws.
    void ReadFromFile(velstdlib::util::CVELConfig& document, const std::string& sectionName);

    // Drops the views.
    void Clear();

    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }

    // Never null. Views that have the same section, and those that have none, share one object.
    const Views& GetViews() const { return m_views; }

private:
    int m_width = 0;
    int m_height = 0;
    Views m_views;
};

} // namespace veltaris::velflexlib::dataset
