// Makes an example of a file such as a microscope writes, byte for byte the same every time and on every machine.
#pragma once

#include "oxd/files/OutputFile.h"

namespace oxd {

// The file holds a scan in both directions, in 16 bits, a series of force curves, in 32 bits, the settings of
// both, and views and processors.
// Throws a Failure if it cannot be written.
void MakeSample(const Destination& destination);

} // namespace oxd
