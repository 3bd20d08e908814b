// What distinguishes two files, A and B: plain data, which the comparison makes and others turn into text.
#pragma once

#include "oxd/compare/Aspect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace oxd {

// What one of the files has; the first alternative stands for nothing, where only the other file has it.
using Content = std::variant<std::monostate, std::string, std::uint64_t, double>;

// A group or a channel: its position in A, or in B where only B has it.
struct Numbered
{
    std::uint64_t position;
    std::string name;
};

struct Place
{
    std::optional<Numbered> group = {};   // none: the file as a whole, or its information
    std::optional<Numbered> channel = {}; // none: the group as a whole
    std::vector<std::string> path = {};   // of information, outermost name first
};

// The raw samples behind two values: values may be equal where samples are not.
struct RawPair
{
    std::int32_t a;
    std::int32_t b;
};

struct Occurrence
{
    std::optional<std::uint64_t> line = {};
    std::optional<std::uint64_t> point = {};
    Content a;
    Content b;
    std::optional<RawPair> raw = {}; // of samples
};

// One property in which the files differ. Either it is there once, with one occurrence that has no line, or once for
// each line or sample of a channel. There may be millions of those, so only the first ones and the largest are kept.
struct Difference
{
    // `magnitude` is how far the contents are apart; what is no number is infinitely far.
    void Add(const Occurrence& occurrence, double magnitude, std::uint64_t shownAtMost)
    {
        if (shown.size() < shownAtMost) {
            shown.push_back(occurrence);
        }
        if (count++ == 0 || magnitude > largestMagnitude) {
            largest = occurrence;
            largestMagnitude = magnitude;
        }
    }

    bool IsOfLines() const { return largest.line.has_value(); }

    Aspect aspect;
    std::string what; // for example "unit of the signal axis"
    Place place = {};
    std::string unit = {}; // of numbers that have one
    std::uint64_t count = 0;
    std::vector<Occurrence> shown = {}; // the first ones
    Occurrence largest = {};            // the first of the largest; none unless `count` is positive
    double largestMagnitude = 0;
};

} // namespace oxd
