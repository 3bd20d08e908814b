// What must hold for any bytes at all that a file may consist of.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// A handle, or 0 with an error stored, which is not lowered. No other file must be open.
std::uint64_t OpenBytes(std::string_view bytes);

// Saves the data set as another file; its bytes.
std::string SaveBytes(std::uint64_t handle);

// Each throws std::logic_error, saying what does not hold. The result is whether the bytes open.
//
// They open and can be read, or fail with an error.
bool CheckOpening(std::string_view bytes);

// What opens can be saved and opened again and reads as before, and its second save gives the bytes of the first.
bool CheckRoundTrip(std::string_view bytes);
