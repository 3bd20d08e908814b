#include "oxd/export/ExportKinds.h"

#include "oxd/library/LineTally.h"
#include "oxd/system/Text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace oxd {

namespace {

std::string Decimal(double number)
{
    constexpr int digits = 9; // a sample has 30 bits
    std::array<char, 32> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, digits);
    return {buffer.data(), end.ptr};
}

std::string WithUnit(const Axis& axis)
{
    return axis.unit.empty() ? axis.name : axis.name + " [" + axis.unit + "]";
}

double Position(const Axis& axis, std::uint64_t index, std::uint64_t count)
{
    if (count < 2) {
        return axis.min;
    }
    const auto last = static_cast<double>(count - 1);
    const double product = axis.range * static_cast<double>(index); // beyond all numbers for a huge axis
    return axis.min + (std::isfinite(product) ? product / last : axis.range * (static_cast<double>(index) / last));
}

std::string HeadingRow(const LineSource& source)
{
    const Channel& channel = source.GetChannel();
    const Axis points = channel.ReadAxis(pointAxis);
    std::string row = QuotedCell(WithUnit(channel.ReadAxis(signalAxis)) +
                                 "; down: " + WithUnit(channel.ReadAxis(lineAxis)) + "; across: " + WithUnit(points));
    for (std::uint64_t point = 0; point < source.Points(); ++point) {
        row += "," + Decimal(Position(points, point, source.Points()));
    }
    return row + "\n";
}

void NoteLinesWithOwnAxes(ExportJob& job)
{
    LineTally own;
    const Channel& channel = job.source.GetChannel();
    for (std::uint64_t line = 0; line < job.source.Lines(); ++line) {
        if (channel.HasOwnPointAxis(line)) {
            own.Add(line, "the heading shows that of the channel");
        }
    }
    if (own.Count() > 0) {
        job.notes.push_back(own.Sentence("with a start or span of its own"));
    }
}

} // namespace

void WriteCsv(ExportJob& job)
{
    LineSource& source = job.source;
    const Axis lines = source.GetChannel().ReadAxis(lineAxis);
    job.output.Write(HeadingRow(source));
    for (std::uint64_t line = 0; line < source.Lines(); ++line) {
        std::string row = Decimal(Position(lines, line, source.Lines()));
        for (const double value : source.ReadReal(line)) {
            row += std::isnan(value) ? "," : "," + Decimal(value);
        }
        job.output.Write(row + "\n");
    }
    NoteLinesWithOwnAxes(job);
    NoteMissingValues(job);
}

} // namespace oxd
