#include "compare/Baseline.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace bench::baseline {

namespace {

constexpr std::uint64_t samplesPerChunk = 65'536;

void Require(bool success)
{
    if (!success)
        throw std::runtime_error("The baseline cannot read or write its file.");
}

template <class T>
void WidenFrom(const std::byte* stored, std::int32_t* raw, std::uint64_t count)
{
    const T* const from = reinterpret_cast<const T*>(stored);
    for (std::uint64_t i = 0; i < count; ++i)
        raw[i] = RawOf(from[i], 8 * static_cast<int>(sizeof(T)));
}

template <class T>
void NarrowTo(const std::int32_t* raw, std::byte* stored, std::uint64_t count)
{
    T* const to = reinterpret_cast<T*>(stored);
    for (std::uint64_t i = 0; i < count; ++i)
        to[i] = static_cast<T>(sizeof(T) == 4 ? raw[i] << 2 : raw[i] >> (30 - 8 * static_cast<int>(sizeof(T))));
}

} // namespace

Samples Allocate(std::uint64_t count)
{
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): containers would write every element first
    return Samples(static_cast<std::int32_t*>(std::malloc(count * sizeof(std::int32_t))));
}

void Widen(const std::byte* stored, std::int32_t* raw, std::uint64_t count, int bits)
{
    if (bits == 8)
        WidenFrom<std::int8_t>(stored, raw, count);
    else if (bits == 16)
        WidenFrom<std::int16_t>(stored, raw, count);
    else
        WidenFrom<std::int32_t>(stored, raw, count);
}

void Narrow(const std::int32_t* raw, std::byte* stored, std::uint64_t count, int bits)
{
    if (bits == 8)
        NarrowTo<std::int8_t>(raw, stored, count);
    else if (bits == 16)
        NarrowTo<std::int16_t>(raw, stored, count);
    else
        NarrowTo<std::int32_t>(raw, stored, count);
}

void ToReal(const std::int32_t* raw, double* real, std::uint64_t count)
{
    for (std::uint64_t i = 0; i < count; ++i)
        real[i] = (raw[i] + 0x1p29) / (0x1p30 - 1);
}

void FromReal(const double* real, std::int32_t* raw, std::uint64_t count)
{
    for (std::uint64_t i = 0; i < count; ++i)
        raw[i] = static_cast<std::int32_t>(std::clamp(real[i], 0.0, 1.0) * (0x1p30 - 1) - 0x1p29);
}

Samples Load(const std::string& path, std::uint64_t samples, int bits)
{
    const CFile file = CFile::BehindHeader(path);
    Samples raw = Allocate(samples);
    const auto sampleBytes = static_cast<std::uint64_t>(bits) / 8;
    std::vector<std::byte> stored(std::min(samples, samplesPerChunk) * sampleBytes);
    for (std::uint64_t first = 0; first < samples; first += samplesPerChunk) {
        const std::uint64_t count = std::min(samplesPerChunk, samples - first);
        file.Read(stored.data(), count * sampleBytes);
        Widen(stored.data(), raw.get() + first, count, bits);
    }
    return raw;
}

void Save(const std::string& path, std::string_view header, const std::int32_t* samples, std::uint64_t count, int bits)
{
    unlink(path.c_str());
    const CFile file = CFile::ToWrite(path);
    file.Write(header.data(), header.size());
    const auto sampleBytes = static_cast<std::uint64_t>(bits) / 8;
    std::vector<std::byte> stored(std::min(count, samplesPerChunk) * sampleBytes);
    for (std::uint64_t first = 0; first < count; first += samplesPerChunk) {
        const std::uint64_t chunk = std::min(samplesPerChunk, count - first);
        Narrow(samples + first, stored.data(), chunk, bits);
        file.Write(stored.data(), chunk * sampleBytes);
    }
}

CFile::CFile(int descriptor) : m_descriptor(descriptor)
{
    Require(descriptor >= 0);
}

CFile::~CFile()
{
    close(m_descriptor);
}

CFile CFile::AtStart(const std::string& path)
{
    return CFile(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

CFile CFile::BehindHeader(const std::string& path)
{
    CFile file = AtStart(path);
    std::string text;
    for (std::size_t mark = std::string::npos; mark == std::string::npos;) {
        const std::size_t searched = text.size();
        text.resize(searched + 4096);
        const auto count = read(file.m_descriptor, text.data() + searched, text.size() - searched);
        Require(count > 0);
        text.resize(searched + static_cast<std::size_t>(count));
        mark = text.find("#!", searched == 0 ? 0 : searched - 1);
        if (mark != std::string::npos)
            Require(lseek(file.m_descriptor, static_cast<off_t>(mark + 2), SEEK_SET) >= 0);
    }
    return file;
}

CFile CFile::ToWrite(const std::string& path)
{
    return CFile(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
}

void CFile::Read(void* to, std::uint64_t bytes) const
{
    for (auto* at = static_cast<char*>(to); bytes > 0;) {
        const auto count = read(m_descriptor, at, bytes);
        Require(count > 0);
        at += count;
        bytes -= static_cast<std::uint64_t>(count);
    }
}

void CFile::Write(const void* from, std::uint64_t bytes) const
{
    for (const auto* at = static_cast<const char*>(from); bytes > 0;) {
        const auto count = write(m_descriptor, at, bytes);
        Require(count > 0);
        at += count;
        bytes -= static_cast<std::uint64_t>(count);
    }
}

} // namespace bench::baseline
