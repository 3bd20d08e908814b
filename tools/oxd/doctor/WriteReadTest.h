// Writes a file of known content and reads it again.
#pragma once

#include "oxd/doctor/Diagnosis.h"

namespace oxd {

// Does so for a name in ASCII and for one with other characters. Leaves no file. The outcome is that files cannot be
// written, or that they cannot be opened as they were written.
void CheckWritingAndReading(Diagnosis& diagnosis);

} // namespace oxd
