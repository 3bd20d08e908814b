#include "oxd/compare/StoredBits.h"

#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <filesystem>
#include <fstream>

namespace oxd {

namespace {

namespace dataset = veltaris::velflexlib::dataset;

void AddGroup(const dataset::CDataGroup& group, std::uint64_t position, StoredBits& bits)
{
    std::uint64_t slot = 0;
    for (const auto& channel : group.GetChannelBuffers()) {
        if (channel) {
            bits[{position, slot}] = channel->GetBitCount();
        }
        ++slot;
    }
}

} // namespace

StoredBits ReadStoredBits(const std::string& file)
{
    const std::atomic<bool> abort = false;
    std::ifstream stream(std::filesystem::path(std::u8string(file.begin(), file.end())), std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    veltaris::velstdlib::util::CVELOXDConfig document;
    document.SetFileName(file);
    document.ReadHeader(stream, abort);
    dataset::CDataSet header; // its channels get a size and no samples
    dataset::CDataSetToVELConfig(header).LoadHeader(document, "DataSet", abort);

    StoredBits bits;
    std::uint64_t position = 0;
    for (const auto& group : header.GetAllGroups()) {
        AddGroup(*group, position++, bits);
    }
    return bits;
}

} // namespace oxd
