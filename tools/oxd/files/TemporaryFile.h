// A file in the making: other programs see it under its name only once it is whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace oxd {

// Has a name that nobody can guess, in the folder that it is made in, until it takes its place. It is removed unless it
// does, also by an interruption of the process; it remains after a crash or a loss of power. There can be only one at a
// time. Functions throw std::system_error with what the system says. Not thread-safe.
class TemporaryFile
{
public:
    // Creates the file in `folder`, with the rights of the file `replaced`, or of a new file if there is none. Without
    // a name there, only this user may read it.
    TemporaryFile(const std::filesystem::path& folder, const std::filesystem::path& replaced);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    void Write(std::string_view bytes);

    // Closes the file, so that something else can write it by its name. Nothing may be written here after that.
    void Close();

    // Closes the file and gives it the name `target`, once its content has arrived on the disk; the name may not have
    // yet. With `mayReplace` it takes the place of the file that is there, in one step.
    void MoveTo(const std::filesystem::path& target, bool mayReplace);

private:
    static constexpr int closed = -1;

    void Flush();

    std::filesystem::path m_path;
    std::filesystem::path m_replaced;
    int m_descriptor;
    bool m_isMoved = false;
};

} // namespace oxd
