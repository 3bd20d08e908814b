// Compares what files hold beside channels and information.
#pragma once

#include "oxd/compare/OtherContent.h"
#include "oxd/compare/Recorder.h"

namespace oxd {

// Sections, which are found by their names, and the number of bytes behind the samples.
void CompareOther(const OtherContent& a, const OtherContent& b, Recorder& recorder);

// Keys in one place of both files. `section` is put behind their names.
void CompareKeys(const KeyValues& a, const KeyValues& b, const Place& place, const std::string& section,
                 Recorder& recorder);

} // namespace oxd
