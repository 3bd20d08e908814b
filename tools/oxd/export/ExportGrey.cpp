#include "oxd/export/ExportKinds.h"

#include "oxd/export/Labels.h"
#include "oxd/picture/PngWriter.h"
#include "oxd/picture/Scale.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"
#include "velstdlib/math/Round.h"

#include <cmath>
#include <optional>
#include <utility>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// Level 0 marks missing samples, so it is no value.
constexpr std::int64_t firstLevel = 1;
constexpr std::int64_t lastLevel = 65535;

// Of all values, unless the user chose another range.
Scale RangeOfValues(LineSource& source, const std::optional<Contrast>& contrast)
{
    std::vector<double> values;
    Scale range = Scale::Nothing();
    for (std::uint64_t line = 0; line < source.Lines(); ++line) {
        for (const double value : source.ReadShown(line)) {
            range.Include(value);
            if (contrast) {
                values.push_back(value);
            }
        }
    }
    return contrast ? RangeOf(*contrast, std::move(values), source.SignalAxis().unit) : range;
}

std::vector<std::uint16_t> Levels(const std::vector<double>& values, const Scale& range)
{
    std::vector<std::uint16_t> levels;
    levels.reserve(values.size());
    for (const double value : values) {
        const double fraction = range.Fraction(value);
        const auto level = std::isnan(fraction) ? 0 : firstLevel + vel_round(fraction * (lastLevel - firstLevel));
        levels.push_back(static_cast<std::uint16_t>(level));
    }
    return levels;
}

} // namespace

void WriteGreyPicture(ExportJob& job)
{
    LineSource& source = job.source;
    LineSource first = source;
    const Scale range = RangeOfValues(first, job.picture.contrast);
    const std::string unit = " " + source.SignalAxis().unit;
    if (!range.IsFinite()) {
        throw Failure(ExitCode::No, job.file, first.NothingToShow());
    }
    PngWriter picture(job.output, source.Points(), source.Lines());
    std::vector<PictureText> texts = LabelsWithRange(job, range);
    texts.push_back({"Value of level 1", ToExactText(range.From()) + unit});
    texts.push_back({"Value of level 65535", ToExactText(range.To()) + unit});
    picture.WriteHeader(texts);
    for (std::uint64_t row = 0; row < source.Lines(); ++row) {
        const std::uint64_t line = job.picture.firstLineOnTop ? row : source.Lines() - 1 - row;
        picture.WriteRow(Levels(source.ReadShown(line), range));
    }
    picture.Finish();
}

} // namespace oxd
