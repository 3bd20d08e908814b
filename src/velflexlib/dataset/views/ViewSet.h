// The views that the acquiring application has opened on a data set, and the size of the area that it shows them in.
#pragma once

#include "velflexlib/dataset/views/View.h"
#include "velstdlib/util/header/VELConfig.h"

#include <memory>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Views are only read: files are written without them.
//
// Invariant: no view is null. Not thread-safe: like the data set that owns it, it is to be used by one thread at a
// time. The views themselves do not change once they have been read.
class CViewSet
{
public:
    using Views = std::vector<std::shared_ptr<const CView>>;

    CViewSet() = default;
    CViewSet(const CViewSet&) = delete;
    CViewSet& operator=(const CViewSet&) = delete;
    ~CViewSet() = default;

    // Replaces the views by those that the section lists. A size of the view area that the section does not give stays
    // as it was. Throws CVELFileVersionException for a version above 1, CVELFileBadContentException for too many views,
    // and what CView::Read throws. After an exception the set holds some views, or none.
    void ReadFromFile(velstdlib::util::CVELConfig& document, const std::string& sectionName);

    void Clear();

    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }

    // In the order of the list. Views that share a section share one object, and so do all views without a section.
    const Views& GetViews() const { return m_views; }

private:
    int m_width = 0;
    int m_height = 0;
    Views m_views;
};

} // namespace veltaris::velflexlib::dataset
