// Messages to the user on the standard error.
#pragma once

#include <string>

namespace oxd {

// Writes one line, "oxd: " and the message. Control characters in it are replaced: a message may quote what a file or a
// command line holds.
void Complain(const std::string& message);

// Writes what is behind a message, for whoever looks for its cause: any number of lines, each with its control
// characters replaced. Nothing is written unless ShowDetails was called before.
void Explain(const std::string& details);
void ShowDetails();

} // namespace oxd
