#include "oxd/export/ExportKinds.h"

#include "oxd/picture/tiff/TiffWriter.h"
#include "oxd/system/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
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

std::string Description(const ExportJob& job)
{
    const Channel& channel = job.source.GetChannel();
    const Axis signal = job.source.SignalAxis();
    Json json{{"channel", Clean(channel.Name())},
              {"group", Clean(channel.GroupName())},
              {"unit", Clean(signal.unit)},
              {"x", Describe(channel.ReadAxis(pointAxis))},
              {"y", Describe(channel.ReadAxis(lineAxis))},
              {"firstLine", "bottom"}};
    for (const PictureText& label : job.labels) {
        json["provenance"][label.key] = label.text;
    }
    return json.dump(-1, ' ', true);
}

// Pixels of a centimetre along an axis of `count` samples, the outer ones of which are at its ends.
std::optional<double> PerCentimetre(const Axis& axis, std::uint64_t count)
{
    constexpr double centimetre = 0.01;
    constexpr double most = 4e9; // of which the format can tell
    const double density = static_cast<double>(count - 1) * centimetre / std::abs(axis.range);
    const bool isTold = axis.unit == "m" && count > 1 && density > 1 / most && density < most;
    return isTold ? std::optional(density) : std::nullopt;
}

TiffShape ShapeOf(const ExportJob& job)
{
    const LineSource& source = job.source;
    TiffShape shape{source.Points(), source.Lines(), TiffSample::Float32, Description(job)};
    const auto x = PerCentimetre(source.GetChannel().ReadAxis(pointAxis), source.Points());
    const auto y = PerCentimetre(source.GetChannel().ReadAxis(lineAxis), source.Lines());
    if (x && y) {
        shape.resolution = {*x, *y};
    }
    return shape;
}

} // namespace

void WriteTiff(ExportJob& job)
{
    TiffWriter picture(job.output, ShapeOf(job));
    for (std::uint64_t line = job.source.Lines(); line-- > 0;) {
        const std::vector<double> values = job.source.ReadShown(line);
        std::vector<float> row(values.size());
        std::ranges::transform(values, row.begin(), [](double value) { return static_cast<float>(value); });
        picture.WriteRow(row.data());
    }
    picture.Finish();
    NoteMissingValues(job);
}

} // namespace oxd
