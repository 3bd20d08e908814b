#include "oxd/picture/tiff/TiffWriter.h"

#include "oxd/files/FilePath.h"
#include "oxd/picture/tiff/TiffFile.h"
#include "oxd/system/Failure.h"
#include "oxd/system/RequireMemory.h"

#include <tiffio.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <limits>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

// The library crashes where it lacks memory for the entries of a file.
constexpr std::size_t roomForEntries = std::size_t{1} << 20U;

constexpr std::uint64_t stripBytes = 65536;
constexpr std::uint64_t largestClassic = 4'000'000'000; // bytes of samples; offsets have 32 bits

// The caller says what failed.
int KeepQuiet(TIFF*, void*, const char*, const char*, std::va_list)
{
    return 1;
}

int BytesOf(TiffSample sample)
{
    return sample == TiffSample::Int16 ? 2 : 4;
}

} // namespace

std::string TiffVersion()
{
    const std::string text = TIFFGetVersion(); // "LIBTIFF, Version 4.5.0" and whose it is
    const std::size_t begin = text.find_first_of("0123456789");
    return begin == std::string::npos ? text : text.substr(begin, text.find('\n') - begin);
}

TiffWriter::TiffWriter(OutputFile& output, const TiffShape& shape)
    : m_output(output), m_file(std::make_unique<TiffFile>())
{
    if (std::max(shape.width, shape.height) > std::numeric_limits<std::int32_t>::max()) {
        throw Failure(ExitCode::CannotWrite, output.Name(), "too large for a picture");
    }
    const int bytes = BytesOf(shape.sample);
    const std::uint64_t rowBytes = std::max<std::uint64_t>(shape.width * static_cast<std::uint64_t>(bytes), 1);
    Open(rowBytes * shape.height > largestClassic);
    const int format = shape.sample == TiffSample::Float32 ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_INT;
    const auto set = [this](std::uint32_t tag, auto value) { return TIFFSetField(m_tiff, tag, value) == 1; };
    bool done =
        set(TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(shape.width)) &&
        set(TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(shape.height)) && set(TIFFTAG_BITSPERSAMPLE, bytes * 8) &&
        set(TIFFTAG_SAMPLESPERPIXEL, 1) && set(TIFFTAG_SAMPLEFORMAT, format) &&
        set(TIFFTAG_COMPRESSION, COMPRESSION_NONE) && set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) &&
        set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) && set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) &&
        set(TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(std::max<std::uint64_t>(stripBytes / rowBytes, 1))) &&
        set(TIFFTAG_IMAGEDESCRIPTION, shape.description.c_str());
    if (done && shape.resolution) {
        done = set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_CENTIMETER) && set(TIFFTAG_XRESOLUTION, shape.resolution->x) &&
               set(TIFFTAG_YRESOLUTION, shape.resolution->y);
    }
    if (!done) {
        TIFFClose(m_tiff);
        throw std::bad_alloc();
    }
}

TiffWriter::~TiffWriter()
{
    if (m_tiff != nullptr) {
        TIFFClose(m_tiff);
    }
}

void TiffWriter::Open(bool isLarge)
{
    RequireMemory(roomForEntries);
    const std::string file = m_output.FileToFill();
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    if (!options) {
        throw std::bad_alloc();
    }
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), KeepQuiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), KeepQuiet, nullptr);
    const char* const mode = isLarge ? "wl8" : "wl";
    errno = 0;
    Require(m_file->Open(ToPath(file)));
    m_tiff = m_file->OpenTiff(mode, options.get());
    Require(m_tiff != nullptr);
}

void TiffWriter::Require(bool done) const
{
    const int error = errno == 0 ? EIO : errno;
    if (!done && error == ENOMEM) {
        throw std::bad_alloc();
    }
    if (!done) {
        throw Failure(ExitCode::CannotWrite, m_output.FilledPlace(), std::generic_category().message(error));
    }
}

void TiffWriter::WriteRow(void* samples)
{
    errno = 0;
    Require(TIFFWriteScanline(m_tiff, samples, m_row++, 0) == 1);
}

void TiffWriter::Finish()
{
    errno = 0;
    Require(TIFFWriteDirectory(m_tiff) == 1);
    TIFFClose(std::exchange(m_tiff, nullptr));
    Require(m_file->Close());
}

} // namespace oxd
