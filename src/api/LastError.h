// The text of the latest failure, one for the whole process.
#pragma once

// Keeps a copy of the text and raises the error flag. Without memory for all of it, as much as fits is kept.
void StoreLastError(const char* text) noexcept;
