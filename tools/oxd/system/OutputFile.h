// Files that the tool writes itself, and the rule that none of them is the input.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace oxd {

// Throws a Failure if both names mean the same file, which would no longer stay as it is.
void RequireOtherFile(const std::string& input, const std::string& output);

// A file that is made, or emptied, when there is something to write. Unless it was closed, it is removed in the end: a
// part of a file looks too much like a whole one. Devices and pipes stay.
class OutputFile
{
public:
    explicit OutputFile(std::string name) : m_name(std::move(name)) {}
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Throws a Failure, as Close does, if the file does not take the data.
    void Write(std::string_view bytes);
    // Only now it is certain that everything written has arrived.
    void Close();

private:
    static constexpr int closed = -1;

    void Open();
    void Require(bool success) const;
    void Remove() const;

    std::string m_name;
    int m_descriptor = closed;
    bool m_removable = false;
};

} // namespace oxd
