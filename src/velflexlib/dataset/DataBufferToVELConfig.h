// One channel to and from a file: its section of the header and its samples.
#pragma once

#include "velflexlib/dataset/Databuffer.h"
#include "velflexlib/dataset/LoadBudget.h"
#include "velstdlib/util/VELConfig.h"

#include <atomic>
#include <iosfwd>
#include <string>

namespace veltaris::velflexlib::dataset {

class CDataBufferToVELConfig
{
public:
    explicit CDataBufferToVELConfig(CDataBuffer& buffer) : m_buffer(buffer) {}

    // Sizes and describes the buffer, which holds its notifications back until LoadData is done. Throws
    // CVELFileVersionException for a version above 3, CVELFileBadContentException for negative sizes, and what the
    // budget throws.
    void LoadHeader(velstdlib::util::CVELConfig& document, const std::string& section, CLoadBudget& budget);

    void SaveHeader(velstdlib::util::CVELConfig& document, const std::string& section);

    // The samples of every line that holds any. The stream decides whether its failures throw. A bit count that no file
    // can have throws std::runtime_error "Invalid bit count: " and the number.
    void LoadData(std::istream& stream, const std::atomic<bool>& abort);
    void SaveData(std::ostream& stream);

private:
    CDataBuffer& m_buffer;
};

} // namespace veltaris::velflexlib::dataset
