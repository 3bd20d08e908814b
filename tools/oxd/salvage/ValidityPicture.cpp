#include "oxd/picture/PngWriter.h"
#include "oxd/salvage/ValidityMap.h"

#include <algorithm>
#include <cstdint>

namespace oxd {

namespace {

// In pixels.
constexpr std::uint64_t stripWidth = 16;
constexpr std::uint64_t gap = 4; // behind each strip, transparent
constexpr std::uint64_t height = 256;

constexpr std::uint16_t transparent = 0;
constexpr std::uint16_t black = 1;
constexpr std::uint16_t grey = 0x8000;
constexpr std::uint16_t white = 0xFFFF;

// Of the lines from `begin` to before `end`, how many are in this state.
std::uint64_t Count(const salvage::SalvagedChannel& channel, std::uint64_t begin, std::uint64_t end,
                    salvage::LineState state)
{
    std::uint64_t count = 0;
    for (const salvage::LineRange& range : channel.ranges) {
        const std::uint64_t from = std::max(begin, range.first);
        const std::uint64_t to = std::min(end, range.first + range.count);
        count += range.state == state && from < to ? to - from : 0;
    }
    return count;
}

// A number of lines is below 2^31, so that its product with a height is far from the largest number.
std::uint16_t Level(const salvage::SalvagedChannel& channel, std::uint64_t heightAboveBottom)
{
    const std::uint64_t begin = heightAboveBottom * channel.lines / height;
    const std::uint64_t end = std::max(begin + 1, (heightAboveBottom + 1) * channel.lines / height);
    const std::uint64_t saved = Count(channel, begin, end, salvage::LineState::Saved);
    const std::uint64_t empty = Count(channel, begin, end, salvage::LineState::Empty);
    if (channel.lines > 0 && saved == end - begin) {
        return white;
    }
    return channel.lines > 0 && saved + empty == 0 ? black : grey;
}

} // namespace

void WritePicture(const salvage::Salvaged& salvaged, OutputFile& output)
{
    const std::uint64_t strips = std::max<std::uint64_t>(salvaged.channels.size(), 1);
    PngWriter picture(output, strips * (stripWidth + gap), height);
    picture.WriteHeader(
        {{"Title", "A strip for each channel, line 0 at the bottom: white saved, black lost, grey both"}});
    for (std::uint64_t row = height; row-- > 0;) {
        std::vector<std::uint16_t> levels;
        for (const salvage::SalvagedChannel& channel : salvaged.channels) {
            levels.insert(levels.end(), stripWidth, Level(channel, row));
            levels.insert(levels.end(), gap, transparent);
        }
        levels.resize(strips * (stripWidth + gap), transparent);
        picture.WriteRow(levels);
    }
    picture.Finish();
}

} // namespace oxd
