#include "oxd/export/Export.h"

#include "oxd/export/ExportKinds.h"
#include "oxd/export/Labels.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Progress.h"
#include "oxd/system/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

namespace oxd {

namespace {

struct Kind
{
    std::string_view suffix;
    Pixels pixels;
    std::uint64_t passes; // how often each line is read
    void (*write)(ExportJob& job);
    std::string_view description;
    std::optional<PictureForm> form = {}; // of what options of pictures are for
    bool isImage = form.has_value();      // whose first line may be at either end
};

constexpr Pixels usual = Pixels::Usual;
constexpr std::array kinds{
    Kind{".png", usual, 1, WritePicture, "picture in colours with axes and a colour bar", PictureForm::Png},
    Kind{".svg", usual, 1, WritePicture, "the same for browsers and drawing programs", PictureForm::Svg},
    Kind{".pdf", usual, 1, WritePicture, "the same for printing", PictureForm::Pdf},
    Kind{".png", Pixels::Grey, 2, WriteGreyPicture,
         "picture of 16 bits, a pixel for each sample, 0 where there is none", PictureForm::Png},
    Kind{".tif", usual, 1, WriteTiff, "picture of 32-bit real values, NaN where there is none, to scale", {}, true},
    Kind{".tif", Pixels::Raw, 2, WriteRawTiff, "the same of raw samples, in 16 bits if these hold all", {}, true},
    Kind{".tiff", usual, 1, WriteTiff, "the same as .tif", {}, true},
    Kind{".tiff", Pixels::Raw, 2, WriteRawTiff, "the same as .tif --raw", {}, true},
    Kind{".csv", usual, 1, WriteCsv, "table with a row for each line, headed by positions"},
    Kind{".raw", usual, 1, WriteRawNumbers, "raw samples, 32-bit little-endian integers, line by line"},
    Kind{".f64", usual, 1, WriteRealNumbers, "real values, 64-bit little-endian, NaN where there is none"},
    Kind{".real", usual, 1, WriteRealNumbers, "the same as .f64"},
};

constexpr std::string_view page = ".html"; // of the whole file, which is no kind of a channel

std::string AllSuffixes()
{
    std::string text;
    for (const Kind& kind : kinds) {
        if (kind.pixels == usual) {
            text.append(" ").append(kind.suffix);
        }
    }
    return text.append(" ").append(page);
}

std::string SuffixOf(const Export& wanted)
{
    if (!wanted.format.empty()) {
        return "." + wanted.format;
    }
    const std::string& file = wanted.output.name;
    std::string suffix = file.substr(std::min(file.size(), file.rfind('.')));
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return suffix;
}

std::string WhyNoneSuits(Pixels pixels)
{
    switch (pixels) {
    case Pixels::Grey:
        return "--grey is for .png only";
    case Pixels::Raw:
        return "--raw is for .tif only; .raw has raw samples without it";
    case Pixels::Usual:
        break;
    }
    return "its suffix is none of" + AllSuffixes() + ", and --format says no other";
}

const Kind& FindKind(const Export& wanted)
{
    const std::string suffix = SuffixOf(wanted);
    const auto* const found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) {
        return kind.suffix == suffix && kind.pixels == wanted.pixels;
    });
    if (found == kinds.end()) {
        throw Failure(ExitCode::Usage, wanted.output.name, WhyNoneSuits(wanted.pixels));
    }
    return *found;
}

std::string_view OptionOf(Pixels pixels)
{
    constexpr std::array<std::string_view, 3> options{"", " --grey", " --raw"};
    return options.at(static_cast<std::size_t>(pixels));
}

std::string HelpLine(std::string_view suffix, std::string_view option, std::string_view description)
{
    constexpr std::size_t width = 12;
    std::string text = std::string(suffix).append(option);
    text.resize(width, ' ');
    return "  " + text.append(description) + "\n";
}

// Channels whose curves can share the axes of the first.
std::vector<LineSource> Others(const Export& wanted, const Channel& first, const DataSet& dataSet, Progress& progress)
{
    std::vector<LineSource> others;
    for (const std::string& name : wanted.with) {
        ChannelSelection selection = wanted.selection;
        selection.channel = name;
        const Channel other = FindChannel(dataSet, selection);
        const bool fits = other.Lines() == first.Lines() &&
                          other.ReadAxis(pointAxis).unit == first.ReadAxis(pointAxis).unit &&
                          other.ReadAxis(signalAxis).unit == first.ReadAxis(signalAxis).unit;
        if (!fits) {
            throw Failure(ExitCode::Usage, "channel \"" + name + "\"", "has other lines or units than the first");
        }
        others.emplace_back(other, wanted.lineOperator, progress);
    }
    return others;
}

} // namespace

bool IsPage(const Export& wanted)
{
    return SuffixOf(wanted) == page;
}

void RequireNothingOfAChannel(const Export& wanted)
{
    const bool wantsPart = !wanted.selection.group.empty() || !wanted.selection.channel.empty();
    const bool wantsChange = !wanted.lineOperator.name.empty() || wanted.pixels != usual || !wanted.picture.IsDefault();
    if (wantsPart || wantsChange || !wanted.with.empty()) {
        throw Failure(ExitCode::Usage, wanted.output.name,
                      "a page holds the whole file, and takes no options of a channel or a picture");
    }
}

PictureForm FormOf(const Export& wanted)
{
    const Kind& kind = FindKind(wanted);
    if (!kind.form || kind.pixels != usual) {
        throw Failure(ExitCode::Usage, wanted.output.name, "a sheet is a .png, .svg or .pdf, and has colours");
    }
    return *kind.form;
}

ExportGaps ExportChannel(const Export& wanted)
{
    FindKind(wanted); // refused without a look at the file
    return ExportChannel(DataSet::Open(wanted.selection.file), wanted);
}

ExportGaps ExportChannel(const DataSet& dataSet, const Export& wanted)
{
    const Kind& kind = FindKind(wanted);
    PictureOptions ofPictures = wanted.picture;
    ofPictures.firstLineOnTop = ofPictures.firstLineOnTop && !kind.isImage;
    if (!kind.form && (!ofPictures.IsDefault() || !wanted.with.empty())) {
        throw Failure(ExitCode::Usage, wanted.output.name, "options of pictures are for .png, .svg and .pdf only");
    }
    RequireOtherFile(wanted.selection.file, wanted.output.name);
    const Channel channel = FindChannel(dataSet, wanted.selection);
    Progress progress(kind.passes * (1 + wanted.with.size()) * channel.Lines());
    LineSource source(channel, wanted.lineOperator, progress);
    OutputFile output(wanted.output);
    ExportJob job{source,
                  Others(wanted, channel, dataSet, progress),
                  output,
                  wanted.selection.file,
                  TitleOf(wanted, channel),
                  wanted.picture,
                  wanted.labels ? LabelsOf(wanted, channel) : std::vector<PictureText>(),
                  {}};
    job.picture.form = kind.form.value_or(PictureForm::Png);
    kind.write(job);
    output.Close();
    return {source.Skipped(), job.notes};
}

void NoteMissingValues(ExportJob& job)
{
    if (!job.source.HasValues()) {
        job.notes.push_back(job.source.NothingToShow());
    }
}

std::vector<std::string> ExportFormats()
{
    std::vector<std::string> formats;
    for (const Kind& kind : kinds) {
        if (kind.pixels == usual) {
            formats.emplace_back(kind.suffix.substr(1));
        }
    }
    formats.emplace_back(page.substr(1));
    return formats;
}

std::string DescribeExportKinds()
{
    std::string text;
    for (const Kind& kind : kinds) {
        text += HelpLine(kind.suffix, OptionOf(kind.pixels), kind.description);
    }
    return text + HelpLine(page, "", "page with the whole file, for any browser; without --group and --channel");
}

} // namespace oxd
