// What differs between operating systems: streams, names and other programs. PlatformFiles.h has what concerns files
// that are replaced, Interruption.h what ends the process. Each function has one definition per system, and all texts
// on this side of it are UTF-8. Functions that give a descriptor or a success leave the reason of a failure in errno.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oxd::platform {

// `name` as the library takes file names; nothing if its encoding lacks a character of it.
std::optional<std::string> FileName(const std::string& name);

// Makes writing to a pipe that nobody reads, or beyond the largest size of a file, an error instead of the end of the
// process, for the whole process. To be called before anything is written.
void IgnoreBrokenPipes();

// Moves the standard output to a descriptor of its own and returns that, or -1 if it was closed. Whatever else writes
// to the standard output from then on, above all the library's log, writes to nowhere.
int TakeStandardOutput();

// Whether the name leads to what is written as it stands and cannot be replaced: a pipe, a device, or an open
// descriptor of this process, such as /dev/stdout.
bool IsStream(const std::string& name);

// Opens such a name for writing, or gives -1. It may wait for a reader of a pipe. The standard output is the one that
// was taken.
int OpenStream(const std::string& name);

// The file of a program or library that is loaded. Empty texts stand for what the system does not tell.
struct LoadedFile
{
    std::string name;
    std::string version; // three numbers with dots
};

// The file that holds the machine code of a function of this process.
LoadedFile FileOf(const void* function);

std::string ProgramFile(); // of this process

// How the system treats texts. The remedy is empty unless names that are not ASCII come to harm.
struct TextSettings
{
    std::string locale;
    std::string encoding;
    std::string remedy;
};

TextSettings GetTextSettings();

bool IsTerminal(int descriptor);

// Opens a file, of which the name is whole, with the program that the user has for it. False if there is none, or if it
// fails within seconds; it may go on after this process.
bool OpenInBrowser(const std::string& file);

// Writes all of `text`, in several steps where it takes them. False if not all of it was taken.
bool WriteAll(int descriptor, std::string_view text);

// False if what was written before may not have arrived. The descriptor is closed in any case.
bool Close(int descriptor);

} // namespace oxd::platform
