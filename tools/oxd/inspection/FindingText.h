// Findings as text, for people and for the members of JSON.
#pragma once

#include "inspect/Inspection.h"

#include <optional>
#include <string>
#include <vector>

namespace oxd {

namespace inspect = veltaris::inspect;

// For example "error: "Points" is not a number. [OXD205]".
std::string Verdict(const inspect::Finding& finding);

// Why the library does not open the file, in one sentence that begins with the line or the byte that it is about: the
// first finding that keeps it from opening. One cut, for example, makes such findings of all channels behind it.
// Nothing if the file opens.
std::optional<std::string> RefusalMessage(const inspect::Inspection& inspection);

// The other errors, as such sentences. Of very many only the first ones, and how many more there are.
std::vector<std::string> ErrorMessages(const inspect::Inspection& inspection);

// Warnings and notes in the same form, all of them.
std::vector<std::string> LesserMessages(const inspect::Inspection& inspection);

} // namespace oxd
