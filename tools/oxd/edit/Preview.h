// What a file would become, for a dry run.
#pragma once

#include <string>

namespace oxd {

// What `saved`, the file that would become `output`, has otherwise than `file`: the difference of the headers as
// unified text, the number of samples of each channel that change, and how many bytes would be written.
std::string Preview(const std::string& file, const std::string& saved, const std::string& output);

} // namespace oxd
