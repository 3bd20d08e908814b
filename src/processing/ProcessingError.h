// What keeps processors from running.
#pragma once

#include <stdexcept>
#include <string>

namespace veltaris::processing {

// what() is a sentence for a person.
class CProcessingError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// A parameter of a processor that its input cannot be processed with.
class CParameterError : public CProcessingError
{
public:
    CParameterError(std::string key, const std::string& reason)
        : CProcessingError(key + " " + reason), m_key(std::move(key))
    {
    }

    const std::string& Key() const { return m_key; }

private:
    std::string m_key;
};

} // namespace veltaris::processing
