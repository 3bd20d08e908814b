// The text of the latest failure and the flag that it has not been read yet, both one for the whole process. The
// exports VELGetLastError and VELHasLastError read them. Failures may be stored by several threads at once; the text is
// read by one thread at a time, and a failure does not change a text that has been read.
#pragma once

// Keeps a copy of the text and raises the flag. Without memory for the whole text, keeps as much of its beginning as
// fits into memory that was set aside when the library was loaded.
void StoreLastError(const char* text) noexcept;
