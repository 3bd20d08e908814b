#include "velstdlib/util/header/VELConfig.h"

#include "velstdlib/string/Encoding.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileAccess.h"
#include "velstdlib/util/header/HeaderText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <string_view>
#include <utility>

namespace veltaris::velstdlib::util {

namespace {

std::uint64_t LengthOf(std::istream& stream)
{
    stream.seekg(0, std::ios::end);
    const auto length = stream.tellg();
    if (length < 0)
        stream.setstate(std::ios::failbit); // which asking does not do by itself
    stream.seekg(0);
    return static_cast<std::uint64_t>(length);
}

std::string ReadBytes(std::istream& stream, std::uint64_t count)
{
    std::string bytes(count, '\0');
    stream.seekg(0);
    stream.read(bytes.data(), static_cast<std::streamsize>(count));
    return bytes;
}

} // namespace

// The last byte of each chunk is carried over, since a mark may straddle two chunks.
std::uint64_t FindHeaderEnd(std::istream& stream, std::uint64_t fileBytes)
try {
    std::array<char, 1 + 16'384> window{};
    std::uint64_t position = 0;
    while (position < fileBytes) {
        const auto count = std::min<std::uint64_t>(fileBytes - position, window.size() - 1);
        if (!stream.read(&window[1], static_cast<std::streamsize>(count)))
            return 0;
        const std::string_view text(window.data(), count + 1);
        if (const auto found = text.find(headerEndMark); found != std::string_view::npos)
            return position + found - 1 + headerEndMark.size();
        window.front() = text.back();
        position += count;
    }
    return 0;
} catch (const std::ios_base::failure&) {
    return 0;
}

std::optional<CHeaderSection> CVELConfig::SelectSection(std::string_view name)
{
    if (!m_content->SelectSection(name))
        return std::nullopt;
    return CHeaderSection{m_content->GetActiveSection(), name, m_fileName};
}

CHeaderSection CVELConfig::SelectCreateSection(std::string_view name)
{
    m_content->SelectCreateSection(name);
    return {m_content->GetActiveSection(), name, m_fileName};
}

bool CVELConfig::ReadHeader(std::istream& stream, const std::atomic<bool>& abort)
{
    Clear();
    const std::uint64_t fileBytes = LengthOf(stream);
    const std::uint64_t headerBytes = FindHeaderEnd(stream, fileBytes);
    if (headerBytes <= headerEndMark.size())
        return false;
    if (headerBytes > limits::headerBytes)
        ThrowBadContent(m_fileName);
    ParseHeader(ReadBytes(stream, headerBytes), fileBytes - headerBytes, abort);
    stream.seekg(static_cast<std::streamoff>(headerBytes));
    return true;
}

void CVELConfig::ParseHeader(std::string bytes, std::uint64_t dataBytes, const std::atomic<bool>& abort)
{
    Clear();
    const std::uint64_t headerBytes = bytes.size();
    if (headerBytes > limits::headerBytes)
        ThrowBadContent(m_fileName);
    std::string text;
    string::AppendAnalyzed(text, std::move(bytes));
    m_content->Parse(std::move(text), abort);
    m_headerBytes = headerBytes;
    m_dataBytes = dataBytes;
    m_isNew = false;
}

void CVELConfig::Clear()
{
    m_content->Clear();
    m_headerBytes = 0;
    m_dataBytes = 0;
    m_isNew = true;
}

void CVELConfig::SaveKeys() const
{
    std::ofstream stream(ToPath(m_fileName), std::ios::binary | std::ios::trunc);
    const int error = errno;
    if (!stream)
        ThrowFileOpen(m_fileName, error);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    const std::string text = m_content->Render();
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
}

} // namespace veltaris::velstdlib::util
