#include "oxd/export/ExportKinds.h"

#include "oxd/picture/tiff/TiffWriter.h"
#include "oxd/system/Text.h"
#include "oxd/system/Unit.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace oxd {

namespace {

using Json = nlohmann::ordered_json;

std::string Clean(const std::string& text)
{
    return ValidUtf8(Printable(text));
}

Json Describe(const Axis& axis)
{
    return {{"name", Clean(axis.name)}, {"unit", Clean(axis.unit)}, {"min", axis.min}, {"range", axis.range}};
}

Json Description(const ExportJob& job)
{
    const Channel& channel = job.source.GetChannel();
    const Axis signal = job.source.SignalAxis();
    Json json{{"channel", Clean(channel.Name())},
              {"group", Clean(channel.GroupName())},
              {"unit", Clean(signal.unit)},
              {"x", Describe(channel.ReadAxis(pointAxis))},
              {"y", Describe(channel.ReadAxis(lineAxis))},
              {"firstLine", job.picture.firstLineOnTop ? "top" : "bottom"}};
    for (const PictureText& label : job.labels) {
        json["provenance"][label.key] = label.text;
    }
    return json;
}

// Pixels of a centimetre along an axis of `count` samples, the outer ones of which are at its ends.
std::optional<double> PerCentimetre(const Axis& axis, std::uint64_t count)
{
    constexpr double centimetre = 0.01;
    constexpr double most = 4e9; // of which the format can tell
    const double length = std::abs(axis.range) * MetresOf(axis.unit).value_or(std::nan(""));
    const double density = static_cast<double>(count - 1) * centimetre / length;
    const bool isTold = count > 1 && density > 1 / most && density < most;
    return isTold ? std::optional(density) : std::nullopt;
}

TiffShape ShapeOf(const ExportJob& job, TiffSample sample, const Json& description)
{
    const LineSource& source = job.source;
    TiffShape shape{source.Points(), source.Lines(), sample, description.dump(-1, ' ', true)};
    const auto x = PerCentimetre(source.GetChannel().ReadAxis(pointAxis), source.Points());
    const auto y = PerCentimetre(source.GetChannel().ReadAxis(lineAxis), source.Lines());
    if (x && y) {
        shape.resolution = {*x, *y};
    }
    return shape;
}

// The lines of a picture from its top.
template <typename WriteLine>
void WriteRows(const ExportJob& job, TiffWriter& picture, WriteLine&& write)
{
    const std::uint64_t lines = job.source.Lines();
    for (std::uint64_t row = 0; row < lines; ++row) {
        write(job.picture.firstLineOnTop ? row : lines - 1 - row);
    }
    picture.Finish();
}

// A raw sample has 30 bits, of which channels of 8 and 16 bits use the highest ones.
constexpr int sparedBits = 14;

bool FitInto16Bits(LineSource source)
{
    constexpr std::uint32_t spared = (1U << sparedBits) - 1;
    const auto fits = [](std::int32_t sample) { return (static_cast<std::uint32_t>(sample) & spared) == 0; };
    bool all = true;
    for (std::uint64_t line = 0; line < source.Lines(); ++line) {
        all = std::ranges::all_of(source.ReadRaw(line), fits) && all;
    }
    return all;
}

// A value is `offset` + `factor` times a sample of these bits.
Json DescribeRaw(const LineSource& source, int bits)
{
    constexpr double span = 1073741823; // of raw samples
    constexpr double lowest = -536870912;
    const Axis signal = source.SignalAxis();
    const double factor = signal.range / span;
    const double offset = source.IsDerived() ? 0 : signal.min - factor * lowest;
    return {{"bits", bits}, {"factor", std::ldexp(factor, bits == 16 ? sparedBits : 0)}, {"offset", offset}};
}

template <typename Sample>
std::uint64_t WriteRawRows(ExportJob& job, TiffWriter& picture, int shift)
{
    std::uint64_t missing = 0;
    WriteRows(job, picture, [&](std::uint64_t line) {
        const std::vector<std::int32_t> samples = job.source.ReadRaw(line);
        std::vector<Sample> row(job.source.Points());
        std::ranges::transform(samples, row.begin(),
                               [&](std::int32_t raw) { return static_cast<Sample>(raw >> shift); });
        missing += row.size() - samples.size();
        picture.WriteRow(row.data());
    });
    return missing;
}

} // namespace

void WriteTiff(ExportJob& job)
{
    TiffWriter picture(job.output, ShapeOf(job, TiffSample::Float32, Description(job)));
    WriteRows(job, picture, [&](std::uint64_t line) {
        const std::vector<double> values = job.source.ReadShown(line);
        std::vector<float> row(values.size());
        std::ranges::transform(values, row.begin(), [](double value) { return static_cast<float>(value); });
        picture.WriteRow(row.data());
    });
    NoteMissingValues(job);
}

void WriteRawTiff(ExportJob& job)
{
    const bool isShort = FitInto16Bits(job.source);
    Json description = Description(job);
    description["raw"] = DescribeRaw(job.source, isShort ? 16 : 32);
    TiffWriter picture(job.output, ShapeOf(job, isShort ? TiffSample::Int16 : TiffSample::Int32, description));
    const std::uint64_t missing =
        isShort ? WriteRawRows<std::int16_t>(job, picture, sparedBits) : WriteRawRows<std::int32_t>(job, picture, 0);
    if (missing > 0) {
        job.notes.push_back(std::to_string(missing) + " missing samples are written as 0");
    }
}

} // namespace oxd
