// The library's log: records in the channel "VelStdLib". They go to the sinks that the program has set up for Boost.Log
// and, where it has set up none, to the default sink, which prints them.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Writes a record of severity "warning" whose attribute "Function" is the signature of the function that noticed. May
// be called by several threads at once. Throws what the sinks throw, and std::bad_alloc.
void LogWarning(const char* function, std::string_view message);

} // namespace veltaris::velstdlib::util
