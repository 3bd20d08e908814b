// A bar on the standard error for work that takes a while. Nothing is shown where that is no terminal.
#pragma once

#include <chrono>
#include <cstdint>

namespace oxd {

class Progress
{
public:
    explicit Progress(std::uint64_t steps);
    ~Progress(); // leaves an empty line
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
