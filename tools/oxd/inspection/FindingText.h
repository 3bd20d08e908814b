// Findings as text, for people and for the members of JSON.
#pragma once

#include "inspect/Inspection.h"

#include <string>
#include <vector>

namespace oxd {

namespace inspect = veltaris::inspect;

// For example "error: "Points" is not a number. [OXD205]".
std::string Verdict(const inspect::Finding& finding);

// The error findings, as sentences that begin with the line or the byte that they are about. Of very many only the
// first ones, and how many more there are. None for a file without a header, of which the library says the same.
std::vector<std::string> ErrorMessages(const inspect::Inspection& inspection);

// Warnings and notes in the same form, all of them.
std::vector<std::string> LesserMessages(const inspect::Inspection& inspection);

} // namespace oxd
