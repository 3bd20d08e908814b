#include "oxd/export/Labels.h"

#include "oxd/system/Text.h"

namespace oxd {

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
