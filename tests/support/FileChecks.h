// Checks of the library for files of any bytes at all. They throw std::logic_error with the property that is violated.
// Not thread-safe: they share one file for opening and one for saving.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Shows where two texts begin to differ.
std::string Difference(const std::string& a, const std::string& b);

// A zero byte in a header is read as such but saved as a blank, and blanks at the end of a text are lost.
bool HasZeroInHeader(std::string_view bytes);

// Opens a file with these bytes. Returns its handle, or 0 with the error stored. No other file may be open.
std::uint64_t OpenBytes(std::string_view bytes);

// Saves the data set under another name and returns the bytes of that file.
std::string SaveBytes(std::uint64_t handle);

// Closes every file that the checks and the fault sweeps may have left open.
void CloseAll();

// Checks that the bytes open and can be read, or fail with an error. Returns whether they open.
bool CheckOpening(std::string_view bytes);

// Also checks that a file that opens can be saved, that the saved file opens and reads as before, and that saving that
// one writes the same bytes again. Returns whether the bytes open.
bool CheckRoundTrip(std::string_view bytes);
