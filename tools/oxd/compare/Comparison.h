// The outcome of comparing two files, A and B: one function makes it and others turn it into text.
#pragma once

#include "oxd/compare/Difference.h"
#include "oxd/compare/Tolerance.h"

#include <string>
#include <vector>

namespace oxd {

struct ComparisonOptions
{
    Aspects aspects;
    Tolerance tolerance = {};
    std::uint64_t shownAtMost = 10; // of the lines or samples in which one property of a channel differs
};

struct Comparison
{
    std::string a; // names of the files
    std::string b;
    std::vector<Difference> differences = {};
    std::vector<std::string> problems = {}; // what could not be compared, a sentence each
};

// Throws a Failure if a file cannot be opened or is damaged. A line that cannot be read is a problem, not a failure.
// What only one file has is a difference of the structure. Such groups and channels are told even without that aspect,
// unless nothing is compared but information: their axes and samples differ from nothing.
Comparison CompareFiles(const std::string& a, const std::string& b, const ComparisonOptions& options);

// For people, a line or more for each difference, in which control characters are replaced. Empty if there is none.
std::string ToText(const Comparison& comparison);

// A JSON document whose shape docs/schema/diff.schema.json gives.
std::string ToJson(const Comparison& comparison, const ComparisonOptions& options);

} // namespace oxd
