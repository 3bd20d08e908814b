// What makes shells ask the tool for candidates.
#pragma once

#include <array>
#include <string_view>

namespace oxd {

struct CompletionScript
{
    std::string_view name; // of the shell
    std::string_view description;
    std::string_view text;
};

// All of them ask `oxd complete -- WORD...` with the words that are typed, and offer files where it knows nothing.
extern const std::array<CompletionScript, 3> completionScripts;

} // namespace oxd
