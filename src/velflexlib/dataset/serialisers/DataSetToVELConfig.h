// A data set to and from a file: the header, then the samples, in this order.
#pragma once

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/LoadBudget.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CDataSetToVELConfig
{
public:
    // `bitCount` is that of channels added later to a group that was loaded.
    explicit CDataSetToVELConfig(CDataSet& dataSet, std::int64_t bitCount = 32)
        : m_dataSet(dataSet), m_bitCount(bitCount)
    {
    }

    // Rebuilds groups and channels from the document, whose section `section` lists them; `abort` is asked before each
    // group and channel. Throws CVELFileVersionException, CVELFileBadContentException, and std::ios_base::failure
    // when the file is too short for the samples that its header promises.
    void LoadHeader(velstdlib::util::CVELConfig& document, const std::string& section, const std::atomic<bool>& abort);

    // Reads the samples, from the byte behind the header. LoadHeader must have come first.
    void LoadData(std::istream& stream, const std::atomic<bool>& abort);

    // Throws what keeps the data set from being saved so that it can be opened again: std::runtime_error "Invalid bit
    // count: ", or CVELFileSaveException when there is more of something than a file may ask for.
    void CheckSavable(const std::string& fileName) const;
    // Writes version 2, and takes the memory that SaveData needs.
    void SaveHeader(velstdlib::util::CVELConfig& document, const std::string& section);
    // Writes the samples of the channels that SaveHeader found. Takes no memory: once it is called, the old file may be
    // gone. Throws std::ios_base::failure when the file cannot be written.
    void SaveData(velstdlib::util::CFileWriter& file);

private:
    void LoadVersion1Header(velstdlib::util::CVELConfig& document, const std::string& section,
                            const std::atomic<bool>& abort);
    void LoadVersion2Header(velstdlib::util::CVELConfig& document, const std::string& section,
                            const std::atomic<bool>& abort);
    void LoadViewsAndProcessors(velstdlib::util::CVELConfig& document);

    CDataSet& m_dataSet;
    std::int64_t m_bitCount;
    int m_version = 0;
    std::vector<std::shared_ptr<CDataBuffer>> m_channelsToSave;
    std::vector<std::byte> m_roomToSave;
};

} // namespace veltaris::velflexlib::dataset
