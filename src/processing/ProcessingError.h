// What keeps processors from running.
#pragma once

#include <stdexcept>

namespace veltaris::processing {

// what() is a sentence for a person.
class CProcessingError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

} // namespace veltaris::processing
