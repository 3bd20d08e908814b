// The measurement information to and from a header: a flat list of groups and items in one section, and trees of
// sections. Which of the two a top-level group is stored in, it knows itself.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoSetToVELConfig
{
public:
    // `section` is the data-set section, below and beside which the others are named.
    CInfoSetToVELConfig(CInfoSet& infoSet, velstdlib::util::CVELConfig& document, std::string section)
        : m_infoSet(infoSet), m_document(document), m_section(std::move(section))
    {
    }

    // Append to the info set. Lists without header lines are sorted into groups by rules that depend on the version of
    // the file. Throws CVELFileBadContentException for counts above the limit.
    void LoadFlat(int fileVersion, const std::atomic<bool>& abort);
    void LoadTree(const std::atomic<bool>& abort);

    // Groups stored flat first, and all of them as trees when a list of keys and values could not hold them. Throws
    // CVELFileWriteProtectedException when the document's file may not be written.
    void Save();

private:
    void SaveFlat(const std::vector<CInfoLine>& lines);

    CInfoSet& m_infoSet;
    velstdlib::util::CVELConfig& m_document;
    std::string m_section;
};

} // namespace veltaris::velflexlib::dataset
