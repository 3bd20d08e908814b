#include "oxd/export/ExportKinds.h"

#include "oxd/system/LittleEndian.h"

#include <bit>

namespace oxd {

void WriteRawNumbers(ExportJob& job)
{
    std::uint64_t missing = 0;
    for (std::uint64_t line = 0; line < job.source.Lines(); ++line) {
        std::vector<std::int32_t> samples = job.source.ReadRaw(line);
        missing += job.source.Points() - samples.size();
        samples.resize(job.source.Points());
        std::string bytes;
        for (const std::int32_t sample : samples) {
            AppendLittleEndian(bytes, static_cast<std::uint32_t>(sample));
        }
        job.output.Write(bytes);
    }
    if (missing > 0) {
        job.notes.push_back(std::to_string(missing) + " missing samples are written as 0");
    }
}

void WriteRealNumbers(ExportJob& job)
{
    for (std::uint64_t line = 0; line < job.source.Lines(); ++line) {
        std::string bytes;
        for (const double value : job.source.ReadReal(line)) {
            AppendLittleEndian(bytes, std::bit_cast<std::uint64_t>(value));
        }
        job.output.Write(bytes);
    }
    NoteMissingValues(job);
}

} // namespace oxd
