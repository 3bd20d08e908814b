#include "oxd/scan/FileCounter.h"

#include "oxd/system/Platform.h"

#include <iostream>
#include <string>

namespace oxd {

namespace {

constexpr int standardError = 2;
constexpr std::chrono::milliseconds pause(500);
constexpr std::size_t width = 30;

} // namespace

FileCounter::FileCounter() : m_isTerminal(platform::IsTerminal(standardError)), m_next(Clock::now() + pause)
{
}

FileCounter::~FileCounter()
{
    if (m_isShown) {
        std::cerr << '\r' << std::string(width, ' ') << '\r' << std::flush;
    }
}

void FileCounter::Add(std::uint64_t files)
{
    m_done += files;
    if (!m_isTerminal || Clock::now() < m_next) {
        return;
    }
    std::cerr << '\r' << m_done << " files" << std::flush;
    m_isShown = true;
    m_next = Clock::now() + pause;
}

} // namespace oxd
