// How a command ends without a result: with an exit code for scripts and a message for people. Below the functions that
// run a command, which catch it, a failure is always thrown and never printed on the spot.
#pragma once

#include <stdexcept>
#include <string>

namespace oxd {

// Scripts rely on the numbers, so a code keeps its number and meaning for good.
enum class ExitCode
{
    Done = 0,
    No = 1,          // the file is sound but does not have what was asked for
    Usage = 2,       // the command line is wrong
    CannotOpen = 3,  // the file is missing or may not be read
    Damaged = 4,     // the file is damaged or of another format
    CannotWrite = 5, // a file or the standard output cannot be written
};

// what() is the whole message for the user but for the name of the tool: what it is about, mostly a file, a colon and
// the reason.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode code, const std::string& subject, const std::string& reason)
        : std::runtime_error(subject + ": " + reason), m_code(code)
    {
    }

    ExitCode Code() const { return m_code; }

private:
    ExitCode m_code;
};

} // namespace oxd
