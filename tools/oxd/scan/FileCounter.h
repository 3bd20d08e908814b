// How many files are done, on the standard error, for a command that does not know how many there will be. Nothing is
// shown where that is no terminal.
#pragma once

#include <chrono>
#include <cstdint>

namespace oxd {

// A message that is written while the number shows would end up behind it, so messages wait until it is gone.
class FileCounter
{
public:
    FileCounter();
    ~FileCounter(); // removes the number
    FileCounter(const FileCounter&) = delete;
    FileCounter& operator=(const FileCounter&) = delete;

    void Add(std::uint64_t files);

private:
    using Clock = std::chrono::steady_clock;

    std::uint64_t m_done = 0;
    bool m_isTerminal;
    bool m_isShown = false;
    Clock::time_point m_next; // when it is shown again
};

} // namespace oxd
