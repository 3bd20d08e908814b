// How a command ends without a result, and what the process then tells its caller.
#pragma once

#include <stdexcept>
#include <string>

namespace oxd {

enum class ExitCode
{
    Done = 0,
    No = 1,          // the file is fine, but has not what was asked for
    Usage = 2,       // the command line is wrong
    CannotOpen = 3,  // the file is missing or may not be read
    Damaged = 4,     // the file is damaged or of another format
    CannotWrite = 5, // a file or the standard output takes no more
};

// Its text is the whole message for the user: what it is about, a colon, and the reason.
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
