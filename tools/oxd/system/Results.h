// The standard output, which carries nothing but what a command was asked for.
#pragma once

#include <string_view>

namespace oxd {

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

    // Only now it is certain that everything written has arrived. Fine without anything written.
    void Close();

private:
    int m_descriptor;
    bool m_written = false;
};

} // namespace oxd
