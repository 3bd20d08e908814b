// What differs between operating systems. Texts are UTF-8 on this side of it, everywhere.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oxd::platform {

// `name` as the library wants file names: nothing if it cannot be said so.
std::optional<std::string> FileName(const std::string& name);

// Makes writing to a pipe that nobody reads an error instead of the end of the process.
void IgnoreBrokenPipes();

// Moves the standard output to a descriptor of its own and returns that, or -1 if it was closed. Whatever else writes
// to the standard output, above all the library's log, goes to the standard error from then on.
int TakeStandardOutput();

// Opens a file for writing, new or emptied, or gives -1 with errno telling why.
int CreateFileFor(const std::string& name);

bool IsRegularFile(int descriptor);
bool IsTerminal(int descriptor);

// Writes all of `text`. False if that failed, with errno telling why.
bool WriteAll(int descriptor, std::string_view text);

// False if the data may not have arrived, with errno telling why.
bool Close(int descriptor);

} // namespace oxd::platform
