#include "compare/Peers.h"

#include <tiffio.h>

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

using File = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

void Require(bool success)
{
    if (!success)
        throw std::runtime_error("libtiff failed");
}

File Open(const std::string& path, const char* mode)
{
    File file(TIFFOpen(path.c_str(), mode), TIFFClose);
    Require(file != nullptr);
    return file;
}

// The size of a strip, approximately.
constexpr std::uint64_t stripBytes = 1'048'576;

class CTiffPeer : public CImagePeer
{
public:
    CTiffPeer() : CImagePeer("libtiff") {}

    void Write(const std::string& path, const Shape& shape, const Produce& line) const override
    {
        const File file = Open(path, "w");
        TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(shape.points));
        TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(shape.lines));
        TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 16);
        TIFFSetField(file.get(), TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_INT);
        TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(stripBytes / (2 * shape.points) + 1));
        std::vector<std::int16_t> stored(shape.points);
        for (std::uint64_t i = 0; i < shape.lines; ++i) {
            std::copy_n(line(i), shape.points, stored.begin());
            Require(TIFFWriteScanline(file.get(), stored.data(), static_cast<std::uint32_t>(i)) == 1);
        }
    }

    void Read(const std::string& path, const Shape& shape, const Consume& line) const override
    {
        const File file = Open(path, "r");
        std::vector<std::int16_t> stored(shape.points);
        std::vector<std::int32_t> samples(shape.points);
        for (std::uint64_t i = 0; i < shape.lines; ++i) {
            Require(TIFFReadScanline(file.get(), stored.data(), static_cast<std::uint32_t>(i)) == 1);
            std::ranges::copy(stored, samples.begin());
            line(samples);
        }
    }

    void Load(const std::string& path, const Shape&, std::int32_t* samples) const override
    {
        const File file = Open(path, "r");
        std::vector<std::int16_t> strip(static_cast<std::size_t>(TIFFStripSize(file.get())) / 2);
        ForEachStrip(*file, [&](std::uint32_t i) {
            const auto bytes =
                TIFFReadEncodedStrip(file.get(), i, strip.data(), static_cast<tmsize_t>(strip.size() * 2));
            Require(bytes > 0);
            samples = std::copy_n(strip.data(), bytes / 2, samples);
        });
    }

    void LoadStored(const std::string& path, const Shape&, std::int16_t* samples) const override
    {
        const File file = Open(path, "r");
        ForEachStrip(*file, [&](std::uint32_t i) {
            const auto bytes = TIFFReadEncodedStrip(file.get(), i, samples, -1);
            Require(bytes > 0);
            samples += bytes / 2;
        });
    }

private:
    template <class Use>
    static void ForEachStrip(TIFF& file, Use use)
    {
        for (std::uint32_t i = 0; i < TIFFNumberOfStrips(&file); ++i)
            use(i);
    }
};

} // namespace

std::unique_ptr<CImagePeer> MakeTiffPeer()
{
    return std::make_unique<CTiffPeer>();
}

} // namespace bench
