#include "oxd/export/Export.h"

#include "oxd/export/ExportKinds.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Progress.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace oxd {

namespace {

struct Kind
{
    std::string_view suffix;
    bool grey;
    std::uint64_t passes; // how often each line is read
    void (*write)(ExportJob& job);
};

constexpr std::array kinds{
    Kind{".png", false, 1, WriteColourPicture}, Kind{".png", true, 2, WriteGreyPicture},
    Kind{".csv", false, 1, WriteCsv},           Kind{".raw", false, 1, WriteRawNumbers},
    Kind{".f64", false, 1, WriteRealNumbers},   Kind{".real", false, 1, WriteRealNumbers},
};

std::string SuffixOf(const std::string& file)
{
    std::string suffix = file.substr(std::min(file.size(), file.rfind('.')));
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return suffix;
}

const Kind& FindKind(const Export& wanted)
{
    const std::string suffix = SuffixOf(wanted.output);
    const auto* const found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) {
        return kind.suffix == suffix && kind.grey == wanted.grey;
    });
    if (found == kinds.end()) {
        throw Failure(ExitCode::Usage, wanted.output,
                      wanted.grey ? "--grey is for .png only" : "its suffix is none of .png .csv .raw .f64 .real");
    }
    return *found;
}

std::string Title(const Export& wanted, const Channel& channel)
{
    const std::string name = wanted.selection.group + ": " + channel.Name();
    const std::string caption(wanted.lineOperator.caption);
    return caption.empty() ? name : name + ", " + caption;
}

} // namespace

ExportGaps ExportChannel(const Export& wanted)
{
    const Kind& kind = FindKind(wanted);
    const DataSet dataSet = DataSet::Open(wanted.selection.file);
    RequireOtherFile(wanted.selection.file, wanted.output);
    const Channel channel = FindChannel(dataSet, wanted.selection);
    Progress progress(kind.passes * channel.Lines());
    LineSource source(channel, wanted.lineOperator, progress);
    OutputFile output(wanted.output);
    ExportJob job{source, output, wanted.selection.file, Title(wanted, channel), {}};
    kind.write(job);
    output.Close();
    return {source.TooShort(), source.Damaged(), job.notes};
}

} // namespace oxd
