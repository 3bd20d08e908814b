#include "support/Oxd.h"

#include <fstream>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

std::string ChannelSection(const Shape& shape, std::uint64_t channel)
{
    return "[DataSet-0:" + std::to_string(channel) + "]\r\nVersion=2\r\nPoints=" + std::to_string(shape.points) +
           "\r\nLines=" + std::to_string(shape.lines) +
           "\r\nFrame=ForwardScan\r\nCurLine=0\r\n"
           "Dim0Name=X*\r\nDim0Unit=m\r\nDim0Range=2.5e-06\r\nDim0Min=-1.25e-06\r\n"
           "Dim1Name=Y*\r\nDim1Unit=m\r\nDim1Range=2.5e-06\r\nDim1Min=0\r\n"
           "Dim2Name=Topography\r\nDim2Unit=m\r\nDim2Range=4.09372e-07\r\nDim2Min=-2.04686e-07\r\n"
           "SaveMode=Binary\r\nSaveBits=" +
           std::to_string(shape.bits) + "\r\nSaveSign=Signed\r\nSaveOrder=Intel\r\n";
}

} // namespace

void CheckLibrary()
{
    if (VELHasLastError())
        throw std::runtime_error(VELGetLastError());
}

std::string HeaderOf(const Shape& shape, std::uint64_t channels, std::uint64_t infoItems)
{
    std::string header = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=ForwardScan\r\nGr0-ID=256\r\nGr0-Count=" +
                         std::to_string(channels) + "\r\n";
    for (std::uint64_t c = 0; c < channels; ++c)
        header += "Gr0-Ch" + std::to_string(c) + "=DataSet-0:" + std::to_string(c) + "\r\n";
    header += "SetInfos=DataSet-Info\r\nInfoSetCount=0\r\n[DataSet-Info]\r\n";
    for (std::uint64_t i = 0; i < infoItems; ++i) {
        if (i % 20 == 0)
            header += "-- Group " + std::to_string(i / 20) + " --=--------\r\n";
        header += "Setting " + std::to_string(i) + "=" + std::to_string(i) + ".5 nm\r\n";
    }
    for (std::uint64_t c = 0; c < channels; ++c)
        header += ChannelSection(shape, c);
    return header + "\r\n#!";
}

void WriteOxd(const std::string& path, const Shape& shape, std::uint64_t channels, std::uint64_t infoItems)
{
    std::ofstream stream(path, std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream << HeaderOf(shape, channels, infoItems);
    for (std::uint64_t line = 0; line < channels * shape.lines; ++line) {
        const auto stored = StoredLine(shape, line);
        stream.write(reinterpret_cast<const char*>(stored.data()), static_cast<std::streamsize>(stored.size()));
    }
    stream.close();
}

COxd::COxd(std::uint64_t handle) : m_handle(handle)
{
    CheckLibrary();
}

COxd COxd::CreateImage(const std::string& path, const Shape& shape)
{
    COxd file = Create(path);
    const auto group = CreateGroup(*file, shape.bits);
    SetChannelCount(*file, group, 1);
    SetChannelXYDimension(*file, group, 0, shape.points, shape.lines);
    SetChannelData_SignalAxisRange(*file, group, 0, 1.0);
    CheckLibrary();
    return file;
}

void COxd::SaveAs(const std::string& path) const
{
    ChangeOxdFilename(m_handle, path.c_str());
    SaveOxdFile(m_handle);
    CheckLibrary();
}

double ChecksumOf(std::uint64_t file, const Shape& shape, std::uint64_t step)
{
    CChecksum checksum;
    std::vector<std::int32_t> samples(shape.points);
    for (std::uint64_t line = 0; line < shape.lines; line += step) {
        GetChannelData_LineRaw(file, 0, 0, line, 0, samples.data());
        checksum.Add(samples);
    }
    CheckLibrary();
    return checksum.Value();
}

} // namespace bench
