// Whether the library can read a value as what its key wants.
#pragma once

#include "inspect/Rules.h"
#include "inspect/header/KeyTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace veltaris::inspect {

// Why a value is not used as written, and what is used instead.
struct ValueFault
{
    RuleId rule;
    std::string taken;
    std::string reason; // "is not a number", to go on with
};

// Asks the functions that the library reads with. `isPrefixed` says that the numbers of axes have prefixed units. May
// be called by several threads at once.
std::optional<ValueFault> CheckValue(const KeySpec& spec, std::string_view value, bool isPrefixed);

} // namespace veltaris::inspect
