// The library's log: records in the channel "VelStdLib", for those who ask for them. There are none unless the program
// has set Boost.Log up, which shows in its having global attributes (boost::log::add_common_attributes), or the
// environment variable VELOXD_LOG is set and not empty when the library is loaded. They go to the sinks that the
// program has added and, where it has added none, to the default sink, which prints them.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Writes a record of severity "warning" whose attribute "Function" is the signature of the function that noticed. May
// be called by several threads at once. Throws what the sinks throw, and std::bad_alloc.
void LogWarning(const char* function, std::string_view message);

} // namespace veltaris::velstdlib::util
