// Finds a font among the files of the machine.
#pragma once

#include <string>

namespace oxd {

// The file of the best known plain font without serifs; empty if the machine has none. Folders that the user may
// not read are passed over; throws std::system_error if others cannot be read.
std::string FindFontFile();

} // namespace oxd
