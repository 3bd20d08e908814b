// The standard output, which carries nothing but what a command was asked for, so that programs can read it.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace oxd {

// Whoever read the standard output has closed it, as `head` does once it has seen enough. That is no failure, but there
// is nobody left to work for: the command ends, quietly.
class ReaderGone : public std::exception
{
public:
    const char* what() const noexcept override { return "nobody reads the standard output"; }
};

// Takes the standard output over for the rest of the process: what the library or anything else writes there from then
// on is not shown. There can be only one.
class Results
{
public:
    Results();
    ~Results();
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;

    // Whether a person reads what is written, on a terminal that it could command.
    bool IsTerminal() const;

    // Throws a Failure, as Close does, if the text does not arrive, and ReaderGone if nobody waits for it.
    void Write(std::string_view text);

    // The same for lines that may quote anything: on a terminal, control characters in them are replaced. Writing no
    // text is no writing.
    void WriteLines(const std::string& text);

    // Only after this is it certain that everything written has arrived. A standard output that is closed is no failure
    // as long as nothing was written to it.
    void Close();

private:
    int m_descriptor;
    bool m_written = false;
};

} // namespace oxd
