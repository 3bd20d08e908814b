// The views and processors of the example: settings of an acquiring application, which the library does not write.
#pragma once

#include <string>

namespace oxd {

// The sections of the header. The groups and channels that they name are those of the example, and behind them the
// group that takes what the processors derive.
std::string SampleSettings();

} // namespace oxd
