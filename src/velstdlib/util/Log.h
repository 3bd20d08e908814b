// The library's log: records in the channel "VelStdLib", through Boost.Log's default sink unless the program has set
// one.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Writes a record of severity "warning" whose attribute "Function" is the signature of the function that noticed.
void LogWarning(const char* function, std::string_view message);

} // namespace veltaris::velstdlib::util
