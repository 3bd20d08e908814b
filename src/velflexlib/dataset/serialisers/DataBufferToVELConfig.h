// One channel to and from a file: its section of the header and its samples.
#pragma once

#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/serialisers/LoadBudget.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

class CDataBufferToVELConfig
{
public:
    explicit CDataBufferToVELConfig(CDataBuffer& buffer) : m_buffer(buffer) {}

    // Sizes and describes the buffer, which holds its notifications back until LoadData is done. Throws
    // CVELFileVersionException for a version above 3, CVELFileBadContentException for negative sizes, and what the
    // budget throws.
    void LoadHeader(velstdlib::util::CVELConfig& document, std::string_view section, CLoadBudget& budget);

    void SaveHeader(velstdlib::util::CVELConfig& document, const std::string& section);

    // The samples of every line that holds any. The stream decides whether its failures throw.
    void LoadData(std::istream& stream, const std::atomic<bool>& abort);

    // The same samples. Takes no memory but `room`, to convert them in, piece by piece: as many bytes as RoomToSave
    // asks for, or more. A bit count that no file can have throws std::runtime_error "Invalid bit count: " and the
    // number, and a file that cannot be written std::ios_base::failure.
    void SaveData(velstdlib::util::CFileWriter& file, std::span<std::byte> room);
    std::size_t RoomToSave() const;

private:
    CDataBuffer& m_buffer;
};

} // namespace veltaris::velflexlib::dataset
