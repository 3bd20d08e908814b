#include "oxd/edit/Correct.h"

#include "oxd/edit/OutputDraft.h"
#include "oxd/edit/SaveCarrying.h"
#include "oxd/provenance/StepLog.h"

#include <optional>

namespace oxd {

namespace {

// Gives the name of the saved file.
std::string SaveCorrected(const Correction& correction, const CarriedSections& carried, OutputFile& output,
                          SkippedLines& untouched)
{
    const ChannelSelection& wanted = correction.selection;
    DataSet dataSet = DataSet::Open(wanted.file);
    const Channel channel = FindChannel(dataSet, wanted);
    std::optional<Step> step;
    if (correction.records) {
        step = DescribeStep(wanted.file, channel, correction.lineOperator);
        AppendStep(dataSet, *step);
    }
    untouched = CorrectLines(channel, correction.lineOperator);
    std::string saved = SaveCarrying(carried, dataSet, output);
    if (step) {
        RequireRecorded(*step, saved, output.Name());
    }
    return saved;
}

} // namespace

SkippedLines CorrectLines(Channel channel, const LineOperator& lineOperator)
{
    SkippedLines untouched;
    const std::uint64_t lines = channel.Lines();
    for (std::uint64_t line = 0; line < lines; ++line) {
        try {
            const std::vector<std::int32_t> corrected = channel.ReadRaw(line, lineOperator.code);
            if (corrected.empty()) {
                untouched.AddTooShort(line);
            } else {
                channel.WriteRaw(line, corrected);
            }
        } catch (const LibraryError& error) {
            untouched.damaged.Add(line, error.what());
        }
    }
    return untouched;
}

Corrected Correct(const Correction& correction, const CarriedSections& carried)
{
    const std::string& file = correction.selection.file;
    RequireOtherFile(file, correction.output.name);
    OutputDraft draft(correction.output, correction.isDryRun);
    Corrected corrected;
    const std::string saved = SaveCorrected(correction, carried, draft.File(), corrected.untouched);
    corrected.preview = draft.Finish(file, saved);
    return corrected;
}

} // namespace oxd
