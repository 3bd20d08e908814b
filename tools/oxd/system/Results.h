// The standard output, which carries nothing but what a command was asked for, so that programs can read it.
#pragma once

#include <string_view>

namespace oxd {

// Takes the standard output over for the rest of the process: what the library or anything else writes there from then
// on goes to the standard error. There can be only one.
class Results
{
public:
    Results();
    ~Results();
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;

    // Whether a person reads what is written, on a terminal that it could command.
    bool IsTerminal() const;

    // Throws a Failure, as Close does, if the text does not arrive.
    void Write(std::string_view text);

    // Only after this is it certain that everything written has arrived. A standard output that is closed is no failure
    // as long as nothing was written to it.
    void Close();

private:
    int m_descriptor;
    bool m_written = false;
};

} // namespace oxd
