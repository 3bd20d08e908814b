// The program, the library and what they are built of.
#pragma once

#include "oxd/doctor/Diagnosis.h"

namespace oxd {

void CheckBuild(const std::string& toolVersion, Checks& checks);

} // namespace oxd
