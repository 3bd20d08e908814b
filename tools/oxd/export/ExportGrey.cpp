#include "oxd/export/ExportKinds.h"

#include "oxd/export/Labels.h"
#include "oxd/picture/PngWriter.h"
#include "oxd/picture/Scale.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"
#include "velstdlib/math/Round.h"

#include <cmath>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

// Level 0 marks missing samples, so it is no value.
constexpr std::int64_t firstLevel = 1;
constexpr std::int64_t lastLevel = 65535;

Scale RangeOfValues(LineSource& source)
{
    Scale range = Scale::Nothing();
    for (std::uint64_t line = 0; line < source.Lines(); ++line) {
        for (const double value : source.ReadReal(line)) {
            range.Include(value);
        }
    }
    return range;
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
    const Scale range = RangeOfValues(first);
    const std::string unit = " " + source.GetChannel().ReadAxis(signalAxis).unit;
    if (!range.IsFinite()) {
        throw Failure(ExitCode::No, job.file, first.NothingToShow());
    }
    PngWriter picture(job.output, source.Points(), source.Lines());
    std::vector<PngText> texts = LabelsWithRange(job, range);
    texts.push_back({"Value of level 1", ToExactText(range.From()) + unit});
    texts.push_back({"Value of level 65535", ToExactText(range.To()) + unit});
    picture.WriteHeader(texts);
    for (std::uint64_t line = source.Lines(); line-- > 0;) {
        picture.WriteRow(Levels(source.ReadReal(line), range));
    }
    picture.Finish();
}

} // namespace oxd
