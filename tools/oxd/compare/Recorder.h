// Gathers what a comparison finds.
#pragma once

#include "oxd/compare/Comparison.h"

#include <string>
#include <utility>

namespace oxd {

// Refers to the options and to the outcome, which must outlive it.
class Recorder
{
public:
    Recorder(const ComparisonOptions& options, Comparison& outcome) : m_options(options), m_outcome(outcome) {}

    const ComparisonOptions& Options() const { return m_options; }
    const Comparison& Outcome() const { return m_outcome; }
    bool Wants(Aspect aspect) const { return m_options.aspects.contains(aspect); }

    // Records that a property of a place, which is there once, is not the same.
    void Differ(Aspect aspect, std::string what, const Place& place, Content a, Content b)
    {
        Difference difference{aspect, std::move(what), place};
        difference.Add({.a = std::move(a), .b = std::move(b)}, 0, 1);
        m_outcome.differences.push_back(std::move(difference));
    }

    // The same if the aspect is wanted and the contents are not equal.
    void Compare(Aspect aspect, std::string what, const Place& place, Content a, Content b)
    {
        if (Wants(aspect) && a != b) {
            Differ(aspect, std::move(what), place, std::move(a), std::move(b));
        }
    }

    // Records a property that is there once for each line or sample, if it differs anywhere.
    void Add(Difference difference)
    {
        if (difference.count > 0) {
            m_outcome.differences.push_back(std::move(difference));
        }
    }

    void AddProblem(std::string sentence) { m_outcome.problems.push_back(std::move(sentence)); }

private:
    const ComparisonOptions& m_options;
    Comparison& m_outcome;
};

} // namespace oxd
