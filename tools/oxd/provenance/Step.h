// One step of how a file came about, and the one in which a channel was run through a line operator.
#pragma once

#include "oxd/library/Channel.h"
#include "oxd/library/LineOperators.h"

#include <string>
#include <utility>
#include <vector>

namespace oxd {

// What a file holds of a step: texts under their names, in order. Steps that later versions wrote may have more of
// them.
struct Step
{
    std::vector<std::pair<std::string, std::string>> items;

    bool operator==(const Step&) const = default;
};

// What every step says of when it was taken, by what, and on the file `source`.
Step DescribeOrigin(const std::string& source);

// The step that `channel` of the file `source` is about to take. The channel must not have been changed yet. A name
// that a file would not keep is left out: the channel is found again without it.
Step DescribeStep(const std::string& source, const Channel& channel, const LineOperator& lineOperator);

// What it takes to repeat a step.
struct StepWork
{
    std::string group; // the channel, as a ChannelSelection names it
    std::string channel;
    LineOperator lineOperator;
    std::string digest; // of the samples before it
};

// Throws a Failure that begins with `subject` if a text that it takes is missing or makes no sense.
StepWork WorkOf(const Step& step, const std::string& subject);

} // namespace oxd
