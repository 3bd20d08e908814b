// The hand-written baseline that the library is compared with: the least work that each benchmark takes. It uses plain
// system calls and one pass over the samples, checks nothing and keeps nothing for later. The operators and conversions
// are compiled for the machine at hand.
//
// The functions share no state. An object is used by one thread at a time.
#pragma once

#include "support/Image.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench::baseline {

struct Free
{
    void operator()(void* memory) const
    {
        std::free(memory);
    } // NOLINT(cppcoreguidelines-no-malloc): it came from there
};

// Memory for samples that is not initialised.
using Samples = std::unique_ptr<std::int32_t[], Free>;
Samples Allocate(std::uint64_t count);

// Convert between stored samples of `bits` bits and raw samples of 30 bits.
void Widen(const std::byte* stored, std::int32_t* raw, std::uint64_t count, int bits);
void Narrow(const std::int32_t* raw, std::byte* stored, std::uint64_t count, int bits);

// Convert between raw samples and real values on a signal axis from 0 to 1.
void ToReal(const std::int32_t* raw, double* real, std::uint64_t count);
void FromReal(const double* real, std::int32_t* raw, std::uint64_t count);

// Read and write all samples of a file, in chunks that stay in the processor's cache. Save replaces the file.
Samples Load(const std::string& path, std::uint64_t samples, int bits);
void Save(const std::string& path, std::string_view header, const std::int32_t* samples, std::uint64_t count, int bits);

// An open file that is read or written from front to back. Every failure throws std::runtime_error.
class CFile
{
public:
    static CFile AtStart(const std::string& path);
    static CFile BehindHeader(const std::string& path);
    static CFile ToWrite(const std::string& path);
    CFile(CFile&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    CFile& operator=(CFile&&) = delete;
    ~CFile();

    void Read(void* to, std::uint64_t bytes) const;
    void Write(const void* from, std::uint64_t bytes) const;

private:
    explicit CFile(int descriptor);
    int m_descriptor;
};

// Line operators 1 to 5. The constructor computes everything that depends on the length of a line alone; Apply reuses a
// buffer of the object.
class COperator
{
public:
    COperator(int code, std::uint64_t points);
    void Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) const;

private:
    void Fit(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) const;

    int m_code;
    std::vector<std::vector<double>> m_basis; // orthonormal polynomials over the points
    mutable std::vector<double> m_fitted;
};

// What a header says about one channel. The texts point into the header.
struct Channel
{
    struct Axis
    {
        std::string_view name;
        std::string_view unit;
        double range;
        double min;
    };

    std::uint64_t points;
    std::uint64_t lines;
    std::string_view frame;
    std::uint64_t currentLine;
    std::array<Axis, 3> axes;
    std::uint64_t bits;
};

// Reads a header, indexes its sections and keys by their case-folded names, and then takes each channel's properties
// from the index. Returns the number of channels.
std::uint64_t ReadHeader(const std::string& path);
// Only reads and indexes the header. Returns the number of sections.
std::uint64_t IndexHeader(const std::string& path);
// Writes the header of a file with this number of channels, all of the given shape.
void WriteHeader(const std::string& path, const Shape& shape, std::uint64_t channels);

// Reads a file line by line and calls use(line) with the raw samples of each.
template <class Use>
void LoadLines(const std::string& path, const Shape& shape, Use use)
{
    const CFile file = CFile::BehindHeader(path);
    std::vector<std::byte> stored(shape.Bytes() / shape.lines);
    std::vector<std::int32_t> line(shape.points);
    for (std::uint64_t i = 0; i < shape.lines; ++i) {
        file.Read(stored.data(), stored.size());
        Widen(stored.data(), line.data(), line.size(), shape.bits);
        use(std::span<const std::int32_t>(line));
    }
}

// Writes a file line by line; produce(line) returns the raw samples of a line.
template <class Produce>
void SaveLines(const std::string& path, std::string_view header, const Shape& shape, Produce produce)
{
    const CFile file = CFile::ToWrite(path);
    file.Write(header.data(), header.size());
    std::vector<std::byte> stored(shape.Bytes() / shape.lines);
    for (std::uint64_t i = 0; i < shape.lines; ++i) {
        Narrow(produce(i), stored.data(), shape.points, shape.bits);
        file.Write(stored.data(), stored.size());
    }
}

} // namespace bench::baseline
