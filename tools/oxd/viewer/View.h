// Shows a file in the system's browser.
#pragma once

#include "oxd/files/OutputFile.h"

#include <string>

namespace oxd {

// Writes the page of the file and gives its name. Without a name in `place`, the page goes to a new folder for
// temporary files, which only this user may read. It stays there: the browser reads it when this process has ended.
// Throws a Failure if it cannot be written.
std::string MakePage(const std::string& file, Destination place);

// Throws a Failure if the system opens no browser.
void OpenPage(const std::string& page);

} // namespace oxd
