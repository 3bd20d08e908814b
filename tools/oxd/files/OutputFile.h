// Files that the tool writes; and the rule that no command writes the file that it reads.
#pragma once

#include "oxd/files/TemporaryFile.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace oxd {

// Where a command is to write, as its command line says.
struct Destination
{
    std::string name;       // UTF-8
    bool mayReplace = true; // a file that exists; streams are written to in any case
};

// Throws a Failure if both names mean the same file, also when one of them is a link. Files that cannot be examined
// pass: they are reported when they are opened.
void RequireOtherFile(const std::string& input, const std::string& output);

// A file that appears under its name, or replaces the file that has it, in one step: by Close, when it is whole and has
// arrived on the disk. Until then, and if anything fails or the process ends, what was there stays as it was. Symbolic
// links are followed, so that what changes is the file to which they lead.
//
// A stream, that is a pipe, a device or /dev/stdout, cannot be replaced. It gets what is written here at once, and what
// the library saves when it is whole.
//
// Every function throws a Failure that names the destination if it cannot be written.
class OutputFile
{
public:
    // Refuses what is bound to fail; changes nothing yet.
    explicit OutputFile(Destination destination);

    // One that never appears: what the library fills is in the folder for temporary files until this is destroyed, and
    // neither Write nor Close may be called. Messages call it OUT.
    OutputFile() : m_destination{"OUT"}, m_isStream(true) {}
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // As the command line names it.
    const std::string& Name() const { return m_destination.name; }

    void Write(std::string_view bytes);

    // For a library that writes files by name: the name, in UTF-8, of an empty file. What it holds at Close is the
    // content. Nothing may be passed to Write besides.
    std::string FileToFill();

    // Puts bytes into that file, once it is filled: what stands at `place` and behind it moves back. Memory stays
    // small.
    void Insert(std::uint64_t place, std::string_view bytes);

    // What a failure to fill that file is about: the destination, and for a stream the folder for temporary files.
    std::string FilledPlace() const;

    // Only after this is it certain that everything written has arrived. A file to which nothing was written is empty.
    // A file that is in its place, but whose name cannot be forced to the disk, is a message and no failure.
    void Close();

private:
    static constexpr int closed = -1;

    void CheckTarget() const;
    void Begin();
    void CreateFile();
    void CopyToStream();
    std::filesystem::path Folder() const; // in which the file is made
    std::string InFolder(const std::filesystem::path& folder) const;
    template <typename Step>
    void Try(Step step, const std::filesystem::path* folder = nullptr) const;

    Destination m_destination;
    bool m_isStream;
    std::filesystem::path m_target; // of links; unused for a stream
    std::optional<TemporaryFile> m_file;
    int m_stream = closed;
};

} // namespace oxd
