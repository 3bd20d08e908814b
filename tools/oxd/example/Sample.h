// Makes a file such as a microscope writes, the same one every time.
#pragma once

#include <string>

namespace oxd {

// A scan in both directions, in 16 bits, a series of force curves, in 32 bits, and the settings of both. Throws a
// Failure if `file` cannot be written.
void MakeSample(const std::string& file);

} // namespace oxd
