#include "oxd/provenance/SampleDigest.h"

#include "oxd/library/LineOperators.h"
#include "oxd/provenance/Sha256.h"
#include "oxd/system/LittleEndian.h"

namespace oxd {

namespace {

std::vector<std::int32_t> SamplesOf(const Channel& channel, std::uint64_t line)
{
    try {
        return channel.ReadRaw(line, rawData.code);
    } catch (const LibraryError&) {
        return {};
    }
}

} // namespace

std::string DigestOfSamples(const Channel& channel)
{
    const std::uint64_t points = channel.Points();
    const std::uint64_t lines = channel.Lines();
    Sha256 sum;
    std::string bytes;
    for (std::uint64_t line = 0; line < lines; ++line) {
        std::vector<std::int32_t> samples = SamplesOf(channel, line);
        samples.resize(points);
        bytes.clear();
        for (const std::int32_t sample : samples) {
            AppendLittleEndian(bytes, static_cast<std::uint32_t>(sample));
        }
        sum.Add(bytes);
    }
    return sum.HexDigest();
}

} // namespace oxd
