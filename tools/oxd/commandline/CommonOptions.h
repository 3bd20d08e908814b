// Options that several commands have, so that they have the same names and mean the same everywhere.
#pragma once

#include "oxd/commandline/EachFile.h"
#include "oxd/files/OutputFile.h"
#include "oxd/library/FindChannel.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace oxd {

// Part of the help of each command that reads an .oxd file and saves another one.
inline constexpr const char* notInSavedFiles =
    "OUT has the views, the processors and the unknown sections of FILE as they stand there.\n"
    "Keys that the library does not know are dropped, and channels that FILE stores in 8 bits\n"
    "take 16 in OUT. What that comes to for FILE is said before it happens.";

// Part of the help of each command with AddSelection.
inline constexpr const char* selectionShape =
    "If several groups or channels have the same name, the first one is used. name:TEXT stands for\n"
    "TEXT also where that consists of digits or begins like another way to name a group or channel.";

// What the options set must outlive the command. A FILE or OUT without a name is wrong usage.
void AddInputFile(CLI::App& command, std::string& file, const char* description = "File to read; stays as it is");
void AddInputFiles(CLI::App& command, std::vector<std::string>& files);
CLI::Option& AddOutput(CLI::App& command, Destination& output);
void AddOutputOrInPlace(CLI::App& command, Destination& output, bool& inPlace); // neither may be given
void AddNoClobber(CLI::App& command, Destination& output);                      // for a command without -o
struct SelectionOptions
{
    CLI::Option& group;
    CLI::Option& channel;
};
SelectionOptions AddSelection(CLI::App& command, ChannelSelection& selection); // with its file, and AddTrust; required

// How a command saves an .oxd file.
struct SavingOptions
{
    bool& isDryRun; // nothing is written
    bool& strict;   // nothing may be lost
};
void AddSaving(CLI::App& command, const SavingOptions& saving);

// Switches `records` off.
void AddNoProvenance(CLI::App& command, bool& records, const char* description);

// Asks for samples that may not be those of their channel.
void AddTrust(CLI::App& command, bool& trust);

// Asks for JSON instead of text: one document, or with AddJsonLines one for each file. Only the latter may be of
// several files, which is wrong usage otherwise.
struct JsonOptions
{
    CLI::Option& document;
    CLI::Option& lines;
};
JsonOptions AddJson(CLI::App& command, FileList& files);
void RequireOneForJson(const FileList& files);

// Asks for one line of JSON for each file, errors included.
CLI::Option& AddJsonLines(CLI::App& command, bool& jsonLines);

// For the file names of a command that has other options for them than these.
CLI::Validator IsNotEmpty();

} // namespace oxd
