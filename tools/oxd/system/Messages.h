// Messages to the user on the standard error, which is where the library's log goes, too.
#pragma once

#include <string>

namespace oxd {

// Writes one line, "oxd: " and the message. Control characters in it are replaced: a message may quote what a file or a
// command line holds.
void Complain(const std::string& message);

} // namespace oxd
