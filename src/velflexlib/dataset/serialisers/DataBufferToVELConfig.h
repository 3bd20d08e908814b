// Moves one channel to and from a file: its section of the header, and its samples.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/serialisers/LoadBudget.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/header/HeaderSection.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

namespace veltaris::velflexlib::dataset {

// Loading has two stages, since the headers of all channels come first in a file: the buffer is given its size and
// axes, and later its samples. Refers to a buffer that must outlive it and keeps no other state. One thread at a time
// may load or save a buffer; others may use it meanwhile.
class CDataBufferToVELConfig
{
public:
    explicit CDataBufferToVELConfig(CDataBuffer& buffer) : m_buffer(buffer) {}

    // Sizes and describes the buffer, which holds its notifications back until LoadData is done. Throws
    // CVELFileVersionException for a version that is too high, and CVELFileBadContentException for negative sizes and
    // when the budget is exhausted.
    void LoadHeader(const velstdlib::util::CHeaderSection& section, CLoadBudget& budget);

    void SaveHeader(velstdlib::util::CVELConfig& document, const std::string& section);

    // Reads the samples of every line that holds any, and takes them off `bytesLeft`, the bytes that the file has from
    // here on. Lines that these do not fill are missing, and the stream is made to fail as if it had been read to its
    // end; it decides whether that throws. Lines from which on loading is aborted are zeros. An unusable bit count
    // throws std::runtime_error "Invalid bit count: " and the number.
    void LoadData(std::istream& stream, std::uint64_t& bytesLeft, const std::atomic<bool>& abort);

    // Writes the same samples. Takes no memory, but converts chunk by chunk in `buffer`, which must have at least
    // TransferBytes() bytes. A bit count that no file can have throws std::runtime_error "Invalid bit count: " and the
    // number, and a file that cannot be written std::ios_base::failure.
    void SaveData(velstdlib::util::CFileWriter& file, std::span<std::byte> buffer);
    std::size_t TransferBytes() const;

private:
    CDataBuffer& m_buffer;
};

} // namespace veltaris::velflexlib::dataset
