// Prints docs/findings.md: all findings from the one table of their rules.
#include "inspect/Rules.h"

#include <array>
#include <iostream>
#include <string_view>

using namespace veltaris::inspect;

namespace {

constexpr std::string_view introduction =
    R"(# Findings

This page is made by `scripts/findings` from the table in `src/inspect/Rules.cpp`.

An inspection reads the header of a file as the library does, and says where it is not what it should be.

- An **error** means that the library does not open the file, or that what it reads may not be what was measured.
- A **warning** means that a value is not used as written, or that a save loses it.
- A **note** is harmless.

The ids stay what they are.
)";

// By the first digit of an id.
constexpr std::array<std::string_view, 7> chapters{
    "", "The text of the header", "Values", "Counts and links", "Samples", "Axes", "What a save changes"};

std::string_view SeverityOf(const Rule& rule)
{
    if (rule.stopsOpening)
        return "Error; the file does not open.";
    constexpr std::array<std::string_view, 3> severities{"Note.", "Warning.", "Error."};
    return severities.at(static_cast<std::size_t>(rule.severity));
}

} // namespace

int main()
{
    std::cout << introduction;
    std::size_t chapter = 0;
    for (const Rule& rule : AllRules()) {
        if (const auto of = static_cast<std::size_t>(rule.number) / 100; of != chapter)
            std::cout << "\n## " << chapters.at(chapter = of) << '\n';
        std::cout << "\n### " << rule.id << ": " << rule.title << "\n\n"
                  << SeverityOf(rule) << ' ' << rule.cause << "\n\n- Example: " << rule.example
                  << "\n- Remedy: " << rule.remedy << '\n';
    }
    return std::cout.flush() ? 0 : 1;
}
