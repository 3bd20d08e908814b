// Checks of the library for edits of files of any bytes at all. They throw std::logic_error with the property that is
// violated. Not thread-safe: they share the files of FileChecks.h.
#pragma once

#include <string_view>

// Checks a file with these bytes, if it opens, and a series of edits, a byte for each. The edits give the same file
// whether it is saved and opened again before and between them or not, whether its samples are read between them or
// not, and whether another file is edited between them or not. The pixels of lines are those of the lines all the time,
// whichever operator both are read through. Returns whether the bytes open.
bool CheckEdits(std::string_view bytes, std::string_view edits);
