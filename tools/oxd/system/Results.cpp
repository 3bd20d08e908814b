#include "oxd/system/Results.h"

#include "oxd/system/Failure.h"
#include "oxd/system/Platform.h"
#include "oxd/system/Text.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

constexpr int closed = -1;

void Require(bool success)
{
    if (!success && errno == EPIPE) {
        throw ReaderGone();
    }
    if (!success) {
        throw Failure(ExitCode::CannotWrite, "standard output", std::generic_category().message(errno));
    }
}

} // namespace

Results::Results() : m_descriptor(platform::TakeStandardOutput())
{
}

Results::~Results()
{
    if (m_descriptor != closed) {
        platform::Close(m_descriptor);
    }
}

bool Results::IsTerminal() const
{
    return platform::IsTerminal(m_descriptor);
}

void Results::Write(std::string_view text)
{
    m_written = true;
    Require(platform::WriteAll(m_descriptor, text));
}

void Results::WriteLines(const std::string& text)
{
    if (!text.empty()) {
        Write(IsTerminal() ? PrintableLines(text) : text);
    }
}

void Results::Close()
{
    const int descriptor = std::exchange(m_descriptor, closed);
    const bool arrived = descriptor == closed || platform::Close(descriptor);
    Require(arrived || !m_written);
}

} // namespace oxd
