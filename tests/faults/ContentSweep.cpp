// Damages small files in every place. Each damaged file must either fail to open with an error, or open, be saved and
// read as before.
#include "support/FileChecks.h"
#include "support/Seeds.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <string>
#include <string_view>

namespace {

int failures = 0;
std::size_t every = 1; // one of this number of bytes, and of values for numbers, is tried
std::size_t points = 0;
std::size_t opened = 0;

// Returns whether the bytes open, and counts a failure if a check is violated.
bool Opens(const std::string& bytes, const std::string& what)
try {
    ++points;
    const bool opens = CheckRoundTrip(bytes);
    opened += opens ? 1 : 0;
    return opens;
} catch (const std::exception& e) {
    if (++failures <= 5)
        std::printf("  %s: %s\n", what.c_str(), e.what());
    CloseAll();
    return false;
}

// A file without the end mark opens as an empty one; a file without all of its samples does not open.
void CutShort(const Seed& seed)
{
    const auto headerEnd = seed.bytes.find("#!") + 2;
    for (std::size_t length = 0; length <= seed.bytes.size(); ++length) {
        const bool shouldOpen = length < headerEnd || length == seed.bytes.size();
        if (Opens(seed.bytes.substr(0, length), "cut to " + std::to_string(length)) != shouldOpen)
            std::printf("  %s, cut to %zu (failure %d)\n", seed.name.c_str(), length, ++failures);
    }
}

void ReplaceBytes(const Seed& seed)
{
    for (std::size_t at = 0; at < seed.bytes.size(); at += every) {
        for (const char damage : {'\0', '9', '-', '\n', ']', '=', '#', '\xFF'}) {
            std::string bytes = seed.bytes;
            bytes[at] = damage;
            Opens(bytes, "byte " + std::to_string(at));
        }
    }
}

constexpr std::string_view extremes[] = {
    "",           "0",          "-0",         "-1",          "1",           "2",
    "+3",         " 1",         "1 ",         "0x10",        "1e3",         "1.5",
    "127",        "255",        "32768",      "65535",       "65536",       "65537",
    "1048576",    "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295",
    "4294967296", "1e308",      "-1e999",     "1e-400",      "nan",         "18446744073709551616"};

// Replaces the value of each line whose value is a number.
void ReplaceNumbers(const Seed& seed)
{
    for (auto at = seed.bytes.find('='); at != std::string::npos; at = seed.bytes.find('=', at + 1)) {
        const auto end = seed.bytes.find('\r', at);
        if (end == std::string::npos || end == at + 1 || !std::isdigit(static_cast<unsigned char>(seed.bytes[end - 1])))
            continue;
        for (std::size_t i = at % every; i < std::size(extremes); i += every)
            Opens(std::string(seed.bytes).replace(at + 1, end - at - 1, extremes[i]),
                  "number at " + std::to_string(at) + " is " + std::string(extremes[i]));
    }
}

void Sweep(const char* name, void (*damage)(const Seed&))
{
    points = opened = 0;
    const int before = failures;
    for (const Seed& seed : Seeds())
        damage(seed);
    std::printf("%s: %zu points, of which %zu open, %d failures\n", name, points, opened, failures - before);
    if (opened == 0 || opened == points)
        std::printf("  not swept: some must open and some must not (failure %d)\n", ++failures);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2)
        every = std::strtoul(argv[1], nullptr, 10);
    if (every == 0)
        return 2;
    Sweep("cut short", CutShort);
    Sweep("a byte replaced", ReplaceBytes);
    Sweep("a number replaced", ReplaceNumbers);
    return failures > 0 ? 1 : 0;
}
