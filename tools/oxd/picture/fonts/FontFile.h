// Finds fonts among the files of the machine.
#pragma once

#include <string>
#include <vector>

namespace oxd {

// The files of well-known plain fonts without serifs that the machine has, the best first, and behind them those that
// have the scripts of East Asia and symbols. Files and folders that the user may not read are passed over; throws
// std::system_error if others cannot be read.
std::vector<std::string> FindFontFiles();

} // namespace oxd
