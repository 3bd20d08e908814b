// Moves a data set to and from a file, of which the header comes first and the samples of all channels behind it.
#pragma once

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velflexlib/dataset/serialisers/LoadBudget.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Loading has two stages, the header and then the samples, and so has saving. One thread at a time may use a serialiser
// and the information, views and processors of its data set; groups and channels may be used by others meanwhile, but
// must not be resized from LoadHeader until LoadData is done.
class CDataSetToVELConfig
{
public:
    // `bitCount` is that of channels added later to a group that was loaded. The data set must outlive the serialiser.
    explicit CDataSetToVELConfig(CDataSet& dataSet, std::int64_t bitCount = 32)
        : m_dataSet(dataSet), m_bitCount(bitCount)
    {
    }
    CDataSetToVELConfig(const CDataSetToVELConfig&) = delete;
    CDataSetToVELConfig& operator=(const CDataSetToVELConfig&) = delete;
    ~CDataSetToVELConfig() { ReleaseNotifications(); }

    // Rebuilds the data set from the document, whose section `section` lists groups and channels; `abort` is asked
    // before each group and channel. No memory is taken for samples. Channels hold their notifications back until
    // LoadData is done, this fails or is aborted, or the serialiser is destroyed.
    // Throws CVELFileVersionException, CVELFileBadContentException, and what views and processors throw. What was built
    // by then stays.
    void LoadHeader(velstdlib::util::CVELConfig& document, const std::string& section, const std::atomic<bool>& abort);

    // Reads the samples of the channels that the last LoadHeader found, from the byte behind the header, until `abort`
    // is set. Throws what the stream throws when it is too short, and std::runtime_error "Invalid bit count: " and the
    // number for a channel that has an unusable one; whole lines that come before that in the file stay. Without a
    // LoadHeader, throws CVELFileVersionException.
    void LoadData(std::istream& stream, const std::atomic<bool>& abort);

    // Throws what keeps the data set from being saved so that it can be opened again: std::runtime_error "Invalid bit
    // count: ", or CVELFileSaveException when there is more of something than a file may ask for.
    void CheckSavable(const std::string& fileName) const;
    // Writes the later version, and takes the memory that SaveData needs.
    void SaveHeader(velstdlib::util::CVELConfig& document, const std::string& section);
    // Writes the samples of the channels that SaveHeader found. Takes no memory, because the old file may be gone once
    // this is called. Throws std::ios_base::failure when the file cannot be written.
    void SaveData(velstdlib::util::CFileWriter& file);

private:
    void BuildGroups(CDataSetPlan& plan, const std::atomic<bool>& abort);
    void LoadChannels(const CDataSetPlan& plan, velstdlib::util::CVELConfig& document,
                      const velstdlib::util::CHeaderSection& section, CLoadBudget& budget,
                      const std::atomic<bool>& abort);
    void NameGroups(const std::atomic<bool>& abort);
    void LoadInformation(velstdlib::util::CVELConfig& document, const std::string& section,
                         const std::atomic<bool>& abort);
    void LoadProcessors(velstdlib::util::CVELConfig& document);
    // Releases those of all channels that are being loaded. Returns the first failure of a slot, or null.
    std::exception_ptr ReleaseNotifications() noexcept;

    CDataSet& m_dataSet;
    std::int64_t m_bitCount;
    int m_version = 0; // 0: no header was loaded
    std::uint64_t m_bytesLeft = 0;
    std::vector<std::shared_ptr<CDataBuffer>> m_channels; // being loaded, in the order of their samples
    std::vector<std::shared_ptr<CDataBuffer>> m_channelsToSave;
    std::vector<std::byte> m_transferBuffer;
};

} // namespace veltaris::velflexlib::dataset
