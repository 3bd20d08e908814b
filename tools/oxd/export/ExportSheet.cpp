#include "oxd/export/ExportAll.h"
#include "oxd/export/Labels.h"
#include "oxd/export/drawing/Drawing.h"
#include "oxd/provenance/Origin.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Progress.h"
#include "oxd/system/Text.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

// In pixels.
constexpr Extent cell{480, 400};
constexpr std::size_t gap = 12;
constexpr std::size_t headHeight = 36;

constexpr std::size_t mostChannels = 100;
constexpr std::size_t mostColumns = 5;

void RequireNothingOfASinglePicture(const Export& wanted)
{
    const PictureOptions& picture = wanted.picture;
    if (picture.size || picture.resolution || picture.title || !picture.lines.empty() || picture.offset ||
        !wanted.with.empty()) {
        throw Failure(ExitCode::Usage, wanted.output.name,
                      "--size, --dpi, --title, --lines, --offset and --with are for a picture of one channel");
    }
}

void RequireSomeChannels(const Export& wanted, std::size_t count)
{
    if (count == 0) {
        throw Failure(ExitCode::No, wanted.selection.file, "has no channels to show");
    }
    if (count > mostChannels) {
        throw Failure(ExitCode::Usage, wanted.selection.file,
                      "has " + std::to_string(count) + " channels, and a sheet shows at most " +
                          std::to_string(mostChannels) + "; --group takes those of one group");
    }
}

// The cells of a sheet, row by row, below its head.
class Grid
{
public:
    explicit Grid(std::size_t count)
        : m_columns(std::min(static_cast<std::size_t>(std::ceil(std::sqrt(count))), mostColumns)),
          m_rows((count + m_columns - 1) / m_columns)
    {
    }

    Extent Size() const { return {gap + m_columns * (cell.columns + gap), headHeight + m_rows * (cell.rows + gap)}; }

    Point Corner(std::size_t position) const
    {
        const std::size_t column = position % m_columns, row = position / m_columns;
        return {static_cast<double>(gap + column * (cell.columns + gap)),
                static_cast<double>(headHeight + row * (cell.rows + gap))};
    }

private:
    std::size_t m_columns, m_rows;
};

std::uint64_t LinesOf(const DataSet& dataSet, const std::vector<std::uint64_t>& groups,
                      const std::vector<ChannelPlace>& places)
{
    std::uint64_t lines = 0;
    for (const ChannelPlace& place : places) {
        lines += Channel(dataSet, groups.at(place.group), place.slot).Lines();
    }
    return lines;
}

// As large as the cell allows, true to scale.
void DrawInCell(Canvas& canvas, const Point& corner, const Drawing& drawing)
{
    const double factor = std::min(static_cast<double>(cell.columns) / static_cast<double>(drawing.size.columns),
                                   static_cast<double>(cell.rows) / static_cast<double>(drawing.size.rows));
    canvas.DrawScaled(corner, factor, [&] { drawing.draw(canvas); });
}

void DrawReason(Canvas& canvas, const Point& corner, const Failure& failure)
{
    constexpr double line = 20;
    const auto width = static_cast<double>(cell.columns);
    canvas.DrawFrame({corner.x, corner.y, width, static_cast<double>(cell.rows)});
    canvas.DrawText(failure.what(), corner.x + gap, corner.y + line, Anchor::Begin, width - 2 * gap);
}

// One channel, which `one` selects.
ExportGaps DrawOne(Canvas& canvas, const Point& corner, const Export& one, const DataSet& dataSet, OutputFile& output,
                   Progress& progress)
{
    const Channel channel = FindChannel(dataSet, one.selection);
    LineSource source(channel, one.lineOperator, progress);
    ExportJob job{source, {}, output, one.selection.file, TitleOf(one, channel), one.picture, {}, {}};
    job.picture.form = canvas.Shape().form;
    DrawInCell(canvas, corner, DrawChannel(job));
    return {source.Skipped(), job.notes};
}

std::vector<PictureText> LabelsOfSheet(const std::string& name)
{
    return {{"Title", name}, {"Software", ToolName()}, {"Source", name}};
}

} // namespace

void ExportSheet(const Export& wanted, const ChannelReport& done, const FailureReport& failed)
{
    const PictureForm form = FormOf(wanted);
    RequireNothingOfASinglePicture(wanted);
    const std::string& file = wanted.selection.file;
    RequireOtherFile(file, wanted.output.name);
    const DataSet dataSet = DataSet::Open(file);
    const std::vector<std::uint64_t> groups = GroupIds(dataSet);
    const std::vector<ChannelPlace> places = PlacesOf(dataSet, wanted.selection);
    RequireSomeChannels(wanted, places.size());
    Progress progress(LinesOf(dataSet, groups, places));
    OutputFile output(wanted.output);
    const Grid grid(places.size());
    const Extent size = grid.Size();
    Canvas canvas({static_cast<int>(size.columns), static_cast<int>(size.rows), form});
    const std::string name = ValidUtf8(Printable(NameWithoutFolder(file)));
    canvas.DrawText(name, gap, headHeight / 2.0, Anchor::Begin, static_cast<double>(size.columns - 2 * gap));
    for (std::size_t i = 0; i < places.size(); ++i) {
        Export one = wanted;
        one.selection.group = "id:" + std::to_string(groups.at(places[i].group));
        one.selection.channel = std::to_string(places[i].slot);
        try {
            done(DrawOne(canvas, grid.Corner(i), one, dataSet, output, progress));
        } catch (const Failure& failure) {
            DrawReason(canvas, grid.Corner(i), failure);
            failed(failure);
        }
    }
    output.Write(canvas.ToFile(wanted.labels ? LabelsOfSheet(name) : std::vector<PictureText>()));
    output.Close();
}

} // namespace oxd
