// The settings that go with the sample, as a microscope notes them down.
#pragma once

#include "oxd/library/DataSet.h"

namespace oxd {

void AddSampleInfo(const DataSet& dataSet);

} // namespace oxd
