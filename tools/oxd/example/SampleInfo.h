// The measurement information of the example: the settings that a microscope notes down with a measurement.
#pragma once

#include "oxd/library/DataSet.h"

namespace oxd {

// Adds them to a data set that has no information yet.
void AddSampleInfo(const DataSet& dataSet);

} // namespace oxd
