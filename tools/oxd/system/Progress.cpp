#include "oxd/system/Progress.h"

#include "oxd/system/Platform.h"

#include <iostream>
#include <string>

namespace oxd {

namespace {

constexpr int standardError = 2;
constexpr std::uint64_t width = 40;
constexpr std::chrono::milliseconds patience(500);

} // namespace

Progress::Progress(std::uint64_t steps) : m_steps(steps), m_isTerminal(platform::IsTerminal(standardError))
{
}

Progress::~Progress()
{
    if (m_shownPercent > 0) {
        constexpr std::uint64_t everything = width + 8;
        std::cerr << '\r' << std::string(everything, ' ') << '\r' << std::flush;
    }
}

void Progress::Advance()
{
    ++m_done;
    if (m_isTerminal && m_done * 100 / m_steps > m_shownPercent && Clock::now() - m_start > patience) {
        Show();
    }
}

void Progress::Show()
{
    m_shownPercent = m_done * 100 / m_steps;
    const std::uint64_t filled = m_shownPercent * width / 100;
    std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << m_shownPercent << " %"
              << std::flush;
}

} // namespace oxd
