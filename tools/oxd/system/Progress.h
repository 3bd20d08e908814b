// A bar on the standard error for commands that take a while. Nothing is shown where that is no terminal, or while the
// command has not taken long enough for anybody to wonder.
#pragma once

#include <chrono>
#include <cstdint>

namespace oxd {

// Must not be advanced more often than it has steps. A message that is written while the bar shows would end up behind
// it, so messages wait until it is gone.
class Progress
{
public:
    explicit Progress(std::uint64_t steps);
    ~Progress(); // removes the bar
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Advance();

private:
    void Show();

    using Clock = std::chrono::steady_clock;

    std::uint64_t m_steps;
    std::uint64_t m_done = 0;
    std::uint64_t m_shownPercent = 0;
    bool m_isTerminal;
    Clock::time_point m_start = Clock::now();
};

} // namespace oxd
