// What may stand in a header. Texts are made fit for it when they are written, and only here. The functions may be
// called by several threads at once.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Ends a header wherever it first stands in a file, so no text of a header may contain it.
inline constexpr std::string_view headerEndMark = "#!";

// `text` as a header can hold it: valid UTF-8 (other bytes are taken for code page 1252), no line breaks and no zero
// bytes (blanks instead), and never "#!", which would end the header ("# !" instead). A change is logged.
std::string CleanHeaderText(std::string_view text);

// Writes the log record of such a change, for functions that have reasons of their own to change a text.
void LogChangedText(const char* function, const std::string& written);

} // namespace veltaris::velstdlib::util
