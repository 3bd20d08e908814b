// What processors have derived, as tables for other programs.
#pragma once

#include "processing/Processing.h"
#include "velflexlib/dataset/DataSet.h"

#include <string>

namespace oxd {

namespace processing = veltaris::processing;

// What a run has done to a data set.
struct ResultSource
{
    std::string file;
    const veltaris::velflexlib::dataset::CDataSet& dataSet;
    const processing::CProcessingReport& report;
};

// Rows of processor, input, line, quantity, value, unit and the reason why there is no value. Curves are left out.
std::string ToCsv(const ResultSource& source);

// A document whose shape docs/schema/process.schema.json describes.
std::string ToJson(const ResultSource& source);

// The input of what was derived, as GROUP/CHANNEL.
std::string InputName(const ResultSource& source, const processing::CProcessed& done);

} // namespace oxd
