// How a command ends without a result: with an exit code for scripts and a message for people. Below the functions that
// run a command, which catch it, a failure is always thrown and never printed on the spot.
#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace oxd {

// Scripts rely on the numbers, so a code keeps its number and meaning for good.
enum class ExitCode
{
    Done = 0,
    No = 1,            // the file is sound but does not have what was asked for
    Usage = 2,         // the command line is wrong
    CannotOpen = 3,    // the file is missing or may not be read
    Damaged = 4,       // the file is damaged or of another format
    CannotWrite = 5,   // a file or the standard output cannot be written
    Internal = 70,     // the tool itself failed
    Interrupted = 130, // 128 and the number of the signal, which is mostly that of Ctrl-C
};

struct ExitCodeMeaning
{
    ExitCode code;
    std::string_view meaning; // as in docs/oxd.md
};

// What the help says of exit codes.
inline constexpr std::array exitCodeMeanings{
    ExitCodeMeaning{ExitCode::Done, "done"},
    ExitCodeMeaning{
        ExitCode::No,
        "the file has no such group, channel, information or processor, or the channel has nothing to show; "
        "process: nothing can be derived from an input; diff, replay: the files differ; validate: there are errors"},
    ExitCodeMeaning{ExitCode::Usage, "wrong usage"},
    ExitCodeMeaning{ExitCode::CannotOpen, "the file is missing or may not be read; view: no browser opens"},
    ExitCodeMeaning{ExitCode::Damaged,
                    "the file is damaged, not an .oxd file, its samples may belong to another channel, or a save would "
                    "lose some of it and --strict is given; replay: it has no provenance"},
    ExitCodeMeaning{ExitCode::CannotWrite,
                    "cannot write: no such folder, no permission, disk full, OUT exists, standard output closed"},
    ExitCodeMeaning{ExitCode::Internal, "the tool failed: not enough memory, or an error in it"},
    ExitCodeMeaning{ExitCode::Interrupted, "interrupted by Ctrl-C; 129 if the terminal went away, 143 if asked to end"},
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
