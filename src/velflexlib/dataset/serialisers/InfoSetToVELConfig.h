// Moves the measurement information to and from a header, which has two forms for it: a flat list of groups and items
// in one section, and trees of sections. Each top-level group knows the form that it is stored in.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Refers to an information set and a document that must outlive it, and keeps no other state. Not thread-safe, like
// both of them.
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

    // Writes the groups that are stored flat first. They are all written as trees, ahead of the others, when reading a
    // flat list would not give back the same groups and items. Throws CVELFileWriteProtectedException when the
    // document's file may not be written.
    void Save();

private:
    void SaveFlat(const std::vector<CInfoLine>& lines);

    CInfoSet& m_infoSet;
    velstdlib::util::CVELConfig& m_document;
    std::string m_section;
};

} // namespace veltaris::velflexlib::dataset
