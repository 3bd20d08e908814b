// Files that the tool writes itself, that is, not through the library; and the rule that no command writes the file
// that it reads.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace oxd {

// Throws a Failure if both names mean the same file, also when one of them is a link. Files that cannot be examined
// pass: they are reported when they are opened.
void RequireOtherFile(const std::string& input, const std::string& output);

// Creates the file, or empties it, when there is something to write, so that a command which fails before that leaves
// an existing file alone. Unless Close succeeds, the file is removed: a part of a file looks too much like a whole one.
// Devices and pipes are not removed.
class OutputFile
{
public:
    explicit OutputFile(std::string name) : m_name(std::move(name)) {}
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Throws a Failure, as Close does, if the file cannot be created or does not take the data.
    void Write(std::string_view bytes);

    // Only after this is it certain that everything written has arrived. A file to which nothing was written is created
    // empty.
    void Close();

private:
    static constexpr int closed = -1;

    void Open();
    void Require(bool success) const; // throws the reason in errno
    void Remove() const;

    std::string m_name;
    int m_descriptor = closed;
    bool m_removable = false;
};

} // namespace oxd
