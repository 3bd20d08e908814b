#include "oxd/edit/SaveCarrying.h"

#include "oxd/inspection/InsertIntoHeader.h"
#include "oxd/inspection/InspectFile.h"
#include "oxd/system/Failure.h"

namespace oxd {

void InsertSections(const CarriedSections& carried, const std::string& saved, OutputFile& output)
{
    if (carried.Text().empty()) {
        return;
    }
    InsertIntoHeader(output, saved, carried.Text());
    if (!InspectQuietly(saved).Opens()) {
        throw Failure(ExitCode::Damaged, output.Name(),
                      "would not open with the views, processors and unknown sections that are to be kept");
    }
}

std::string SaveCarrying(const CarriedSections& carried, DataSet& dataSet, OutputFile& output)
{
    std::string saved = dataSet.SaveTo(output);
    InsertSections(carried, saved, output);
    return saved;
}

} // namespace oxd
