#include "oxd/edit/FirstDifference.h"

#include "oxd/files/FilePath.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <fstream>
#include <vector>

namespace oxd {

namespace {

// A file that is read part by part.
class ByteSource
{
public:
    explicit ByteSource(const std::string& name) : m_name(name), m_file(ToPath(name), std::ios::binary)
    {
        Require(m_file.is_open());
    }

    // The next bytes, none at the end of the file.
    std::string_view Next()
    {
        m_file.read(m_bytes.data(), static_cast<std::streamsize>(m_bytes.size()));
        Require(!m_file.bad());
        return {m_bytes.data(), static_cast<std::size_t>(m_file.gcount())};
    }

private:
    void Require(bool isReadable) const
    {
        if (!isReadable) {
            throw Failure(ExitCode::CannotOpen, m_name, "cannot be read");
        }
    }

    static constexpr std::size_t part = std::size_t{1} << 20;

    std::string m_name;
    std::ifstream m_file;
    std::vector<char> m_bytes = std::vector<char>(part);
};

std::uint64_t LineOf(std::uint64_t byte, const std::string& name)
{
    ByteSource source(name);
    std::uint64_t lines = 1;
    std::uint64_t left = byte;
    while (left > 0) {
        const std::string_view bytes = source.Next().substr(0, left);
        lines += static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), '\n'));
        left -= bytes.empty() ? left : bytes.size();
    }
    return lines;
}

} // namespace

std::optional<std::uint64_t> FirstDifference(const std::string& a, const std::string& b)
{
    ByteSource sourceA(a);
    ByteSource sourceB(b);
    std::uint64_t passed = 0;
    while (true) {
        const std::string_view partA = sourceA.Next();
        const std::string_view partB = sourceB.Next();
        const auto [endA, endB] = std::mismatch(partA.begin(), partA.end(), partB.begin(), partB.end());
        passed += static_cast<std::uint64_t>(endA - partA.begin());
        if (endA != partA.end() || endB != partB.end()) {
            return passed;
        }
        if (partA.empty()) {
            return std::nullopt;
        }
    }
}

std::string PlaceOf(std::uint64_t byte, const inspect::Inspection& inspection)
{
    if (byte < inspection.headerBytes) {
        return "line " + std::to_string(LineOf(byte, inspection.file)) + " of the header";
    }
    for (const inspect::ChannelSamples& channel : inspection.channels) {
        if (byte >= channel.offset && byte - channel.offset < channel.bytes) {
            constexpr std::uint64_t bitsPerByte = 8;
            const std::uint64_t sample =
                (byte - channel.offset) * bitsPerByte / static_cast<std::uint64_t>(channel.bits);
            return "channel \"" + channel.name + "\" of group " + std::to_string(channel.group) + ", line " +
                   std::to_string(sample / channel.points) + ", point " + std::to_string(sample % channel.points);
        }
    }
    return "the end of the samples";
}

} // namespace oxd
