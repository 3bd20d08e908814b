#include "oxd/export/Labels.h"

#include "oxd/provenance/Origin.h"
#include "oxd/system/Text.h"

namespace oxd {

std::string TitleOf(const Export& wanted, const Channel& channel)
{
    if (wanted.picture.title) {
        return *wanted.picture.title;
    }
    std::string name = channel.GroupName() + ": " + channel.Name();
    for (const std::string& other : wanted.with) {
        name += ", " + other;
    }
    const std::string caption(wanted.lineOperator.caption);
    return caption.empty() ? name : name + ", " + caption;
}

std::vector<PictureText> LabelsOf(const Export& wanted, const Channel& channel)
{
    std::vector<PictureText> labels{{"Title", TitleOf(wanted, channel)},
                                    {"Software", ToolName()},
                                    {"Source", NameWithoutFolder(wanted.selection.file)},
                                    {"Group", channel.GroupName()},
                                    {"Channel", channel.Name()}};
    if (!wanted.lineOperator.name.empty()) {
        labels.push_back({"Operator", std::string(wanted.lineOperator.name)});
    }
    for (PictureText& label : labels) {
        label.text = ValidUtf8(Printable(label.text));
    }
    return labels;
}

std::vector<PictureText> LabelsWithRange(const ExportJob& job, const Scale& range)
{
    std::vector<PictureText> labels = job.labels;
    if (!labels.empty()) {
        const std::string unit = job.source.SignalAxis().unit;
        const std::string text = ToExactText(range.From()) + " .. " + ToExactText(range.To()) + " " + unit;
        labels.push_back({"Range", ValidUtf8(Printable(text))});
    }
    return labels;
}

} // namespace oxd
