#include "velstdlib/util/VELConfig.h"

#include "velstdlib/string/Encoding.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <string_view>
#include <utility>

namespace veltaris::velstdlib::util {

namespace {

constexpr std::string_view headerEndMark = "#!";

struct HeaderExtent
{
    std::uint64_t headerBytes = 0; // up to and including the mark; 0 when there is none
    std::uint64_t fileBytes = 0;
};

std::uint64_t LengthOf(std::istream& stream)
{
    stream.seekg(0, std::ios::end);
    const auto length = stream.tellg();
    stream.seekg(0);
    return length < 0 ? 0 : static_cast<std::uint64_t>(length);
}

// Position behind the first mark, or 0. The last byte of each chunk leads the next one, where a mark may begin with it.
std::uint64_t FindHeaderEnd(std::istream& stream, std::uint64_t fileBytes)
{
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
}

// A stream that fails here may be anything but a data file: it has no header.
HeaderExtent Measure(std::istream& stream)
try {
    const auto fileBytes = LengthOf(stream);
    return {FindHeaderEnd(stream, fileBytes), fileBytes};
} catch (const std::ios_base::failure&) {
    return {};
}

std::string ReadText(std::istream& stream, std::uint64_t bytes)
{
    std::string raw(bytes, '\0');
    stream.seekg(0);
    stream.read(raw.data(), static_cast<std::streamsize>(bytes));
    std::string text;
    string::AppendAnalyzed(text, std::move(raw));
    return text;
}

} // namespace

bool CVELConfig::ReadHeader(std::istream& stream, const std::atomic<bool>& abort)
{
    Clear();
    const HeaderExtent extent = Measure(stream);
    if (extent.headerBytes <= headerEndMark.size())
        return false;
    if (extent.headerBytes > limits::headerBytes)
        ThrowBadContent(m_fileName);
    m_content->Parse(ReadText(stream, extent.headerBytes), abort);
    stream.seekg(static_cast<std::streamoff>(extent.headerBytes));
    m_headerBytes = extent.headerBytes;
    m_dataBytes = extent.fileBytes - extent.headerBytes;
    m_isNew = false;
    return true;
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
    std::ofstream stream(m_fileName, std::ios::binary | std::ios::trunc);
    const int error = errno;
    if (!stream)
        ThrowFileOpen(m_fileName, error);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    const std::string text = m_content->Render();
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
}

} // namespace veltaris::velstdlib::util
