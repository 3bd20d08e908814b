#include "oxd/edit/Correct.h"

namespace oxd {

namespace {

SkippedLines CorrectLines(Channel channel, std::int32_t lineOperator)
{
    SkippedLines untouched;
    const std::uint64_t lines = channel.Lines();
    for (std::uint64_t line = 0; line < lines; ++line) {
        try {
            const std::vector<std::int32_t> corrected = channel.ReadRaw(line, lineOperator);
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

} // namespace

SkippedLines Correct(const Correction& correction)
{
    const ChannelSelection& wanted = correction.selection;
    DataSet dataSet = DataSet::Open(wanted.file);
    RequireOtherFile(wanted.file, correction.output.name);
    OutputFile output(correction.output);
    SkippedLines untouched = CorrectLines(FindChannel(dataSet, wanted), correction.lineOperator.code);
    dataSet.SaveTo(output);
    output.Close();
    return untouched;
}

} // namespace oxd
