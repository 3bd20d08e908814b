// Interprets the input as a script: a series of calls of any exported functions with valid arguments, invalid ones and
// null pointers. Every call must succeed, or fail with an error text and a neutral result. After a quarter of the
// scripts, the data set is saved if possible and must open again.
#include "support/Bytes.h"
#include "support/MemoryFile.h"

#include <VELOxdDll.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::uint64_t handlesToClose = 64;
constexpr std::size_t longestText = 8192; // longer than any text that a script can make
constexpr int mostFiles = 2;              // that a script opens, saves and closes

void Require(bool holds, const char* what)
{
    if (!holds)
        throw std::logic_error(std::string("violated: ") + what + "\n" + VELGetLastError());
}

class CScript
{
public:
    explicit CScript(std::string_view bytes) : m_bytes(bytes) {}

    void Run();

    // Makes the arguments in order, since some depend on earlier ones, and calls the function.
    template <class Result, class... Arguments>
    void Apply(Result (*function)(Arguments...))
    {
        m_numbers.clear();
        m_bufferSize.reset();
        const std::tuple<Arguments...> arguments{Make(static_cast<Arguments*>(nullptr))...};
        VELGetLastError();
        if constexpr (std::is_void_v<Result>) {
            std::apply(function, arguments);
            CheckResult(true);
        } else {
            const Result result = std::apply(function, arguments);
            CheckResult(result == Result());
            if constexpr (std::is_same_v<Result, std::uint64_t>)
                m_results[m_resultCount++ % m_results.size()] = result;
        }
    }

private:
    std::uint8_t Byte() // 0 at the end of the script
    {
        if (m_bytes.empty())
            return 0;
        const auto byte = static_cast<std::uint8_t>(m_bytes.front());
        m_bytes.remove_prefix(1);
        return byte;
    }

    static void CheckResult(bool neutral)
    {
        Require(!VELHasLastError() || neutral, "a failed call returns a neutral result");
        Require(!VELHasLastError() || *VELGetLastError() != '\0', "a failed call has an error text");
    }

    // Handles, indices and sizes are mostly small and sometimes too large. The first two arguments may also be an
    // earlier result: this is the only way to get a valid handle of an information node. Sizes are small enough to save
    // quickly.
    std::uint64_t Make(const std::uint64_t*)
    {
        constexpr std::array<std::uint64_t, 8> wrong{
            40, 130, 0x8000'0000, 0x1'0000'0000, 0x1'0000'0001, std::uint64_t{1} << 63U, ~1ULL, ~0ULL};
        std::uint64_t number = m_bufferSize.value_or(Byte());
        if (!m_bufferSize && number >= 0xF0)
            number = wrong[number % wrong.size()];
        else if (!m_bufferSize && number >= 0x80 && m_numbers.size() < 2)
            number = m_results[number % m_results.size()];
        else if (!m_bufferSize)
            number = m_numbers.empty() ? 1 + number % 2 : number % 8; // the first one is a file's
        m_bufferSize.reset();
        return m_numbers.emplace_back(number);
    }

    std::int32_t Make(const std::int32_t*)
    {
        constexpr std::array<std::int32_t, 16> numbers{
            0, 1, 2, 3, 4, 5, 6, 8, 16, 32, -1, 536'870'911, -536'870'912, 0x7FFF'FFFF, -0x7FFF'FFFF - 1, 12};
        return numbers[Byte() % numbers.size()];
    }

    double Make(const double*)
    {
        using Limits = std::numeric_limits<double>;
        constexpr std::array<double, 12> numbers{0,
                                                 -0.0,
                                                 1,
                                                 -2.5,
                                                 1e-9,
                                                 1e300,
                                                 Limits::max(),
                                                 Limits::lowest(),
                                                 Limits::denorm_min(),
                                                 Limits::infinity(),
                                                 -Limits::infinity(),
                                                 Limits::quiet_NaN()};
        return numbers[Byte() % numbers.size()];
    }

    const char* Make(const char* const*)
    {
        if (m_namesFile)
            return FileName();
        const std::size_t wanted = Byte() % 32U;
        const std::size_t length = std::min(wanted, m_bytes.size());
        auto* const text = New<char>(length + 1);
        m_bytes.copy(text, length);
        m_bytes.remove_prefix(length);
        return OrNull(text);
    }

    // The next number is the size of the buffer. A size of 0 disables the library's check, so the buffer must then be
    // large enough for any text.
    char* Make(char* const*)
    {
        m_bufferSize = Byte() % 64U;
        return OrNull(New<char>(*m_bufferSize > 0 ? *m_bufferSize : longestText));
    }

    std::uint64_t* Make(std::uint64_t* const*) { return OrNull(New<std::uint64_t>(GetGroupCount(m_numbers.at(0)))); }

    // A buffer for a line: all its points when the line is written, the valid ones when it is read.
    template <class Value>
    Value* Make(Value* const*)
    {
        const auto& n = m_numbers;
        const auto count = std::is_const_v<Value> ? GetChannelData_Points(n.at(0), n.at(1), n.at(2))
                                                  : GetChannelData_PointsPerLine(n.at(0), n.at(1), n.at(2), n.at(3));
        return OrNull(New<std::remove_const_t<Value>>(count));
    }

    // Allocates exactly `count` values, so that sanitizers see any access beyond them, until the end of the script.
    template <class Value>
    Value* New(std::size_t count)
    {
        Require(count < 1'000'000, "scripts make no long lines");
        auto values = std::make_shared<std::vector<Value>>(count);
        values->reserve(1); // the pointer is not null even for no values
        m_memory.push_back(values);
        return values->data();
    }

    template <class Value>
    Value* OrNull(Value* pointer)
    {
        return Byte() == 0xFF ? nullptr : pointer;
    }

    // The name of one of the script's files or of a file that cannot exist, or null.
    const char* FileName();
    static void CheckFile();

    std::string_view m_bytes;
    std::vector<std::uint64_t> m_numbers;      // of the current call
    std::optional<std::uint64_t> m_bufferSize; // of a buffer whose size is the next number
    bool m_namesFile = false;                  // whether texts of the current call are file names
    int m_filesUsed = 0;
    std::array<std::uint64_t, 16> m_results{};
    std::size_t m_resultCount = 0;
    std::vector<std::shared_ptr<void>> m_memory;
};

struct Function
{
    std::string_view name;
    void (*apply)(CScript& script);
};

constexpr Function functions[] = {
#include "functions.inc"
};

// A file of each version and one that is not valid. They are small, since opening them takes most of the time.
constexpr std::array<std::string_view, 3> contents{
    "[DataSet]\r\nChannelCount=1\r\nFrameCount=1\r\nCh0-Fr0=A\r\n[A]\r\nPoints=2\r\nLines=2\r\nDim2Range=1\r\n"
    "[SetInfos]\r\nGap=2 V\r\n#!abcdefgh",
    "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=2\r\nGr0-Ch0=A\r\nSetInfos=I\r\nInfoSetCount=1\r\nInfoSet0="
    "T\r\n"
    "[A]\r\nVersion=3\r\nPoints=3\r\nLines=4\r\nLineDim0Min=0.5\r\nLineDim1Points=1\r\nLineDim2Points=0\r\n"
    "LineDim3Points=0\r\nSaveBits=16\r\n"
    "[I]\r\n-- Scan --=--------\r\nTime=1 s\r\n[DataSet\\T]\r\nGain=5\r\n#!abcdefghijkl",
    "[DataSet]"};

const std::array<std::string, contents.size()>& Files()
{
    static const std::array<std::string, contents.size()> paths{CreateMemoryFile(), CreateMemoryFile(),
                                                                CreateMemoryFile()};
    return paths;
}

const char* CScript::FileName()
{
    const auto choice = Byte() % 8U;
    if (choice == 6)
        return "/proc/self/fd/none";
    return choice == 7 ? nullptr : Files()[choice % Files().size()].c_str();
}

void CScript::Run()
{
    for (std::size_t i = 0; i < Files().size(); ++i)
        WriteBytes(Files()[i], contents[i]);
    while (!m_bytes.empty()) {
        const Function& function = functions[Byte() % std::size(functions)];
        m_namesFile = function.name.find("OxdFile") != std::string_view::npos;
        if (!m_namesFile || ++m_filesUsed <= mostFiles)
            function.apply(*this);
    }
    if (m_resultCount % 4 == 0) // an arbitrary quarter of the scripts
        CheckFile();
    for (std::uint64_t handle = 1; handle < handlesToClose; ++handle)
        CloseOxdFile(handle);
}

// Returns the bits of all samples that every stored width keeps, line by line.
std::vector<std::int32_t> TopBits(std::uint64_t handle)
{
    std::vector<std::uint64_t> groups(GetGroupCount(handle) + 1); // one more, so that the pointer is not null
    GetAllGroupIds(handle, groups.data());
    groups.pop_back();
    std::vector<std::int32_t> bits;
    const auto add = [&](std::uint64_t group, std::uint64_t channel) {
        for (std::uint64_t line = 0; line < GetChannelData_Lines(handle, group, channel); ++line) {
            const auto count = GetChannelData_PointsPerLine(handle, group, channel, line);
            std::vector<std::int32_t> samples(count + 1);
            GetChannelData_LineRaw(handle, group, channel, line, 0, samples.data());
            for (std::uint64_t i = 0; i < count; ++i)
                bits.push_back(samples[i] >> 22);
            bits.push_back(static_cast<std::int32_t>(count) + 1000); // ends a line; differs from all samples
        }
    };
    for (const auto group : groups) {
        for (std::uint64_t channel = 0; channel < GetChannelCount(handle, group); ++channel) {
            if (HasChannelBuffer(handle, group, channel))
                add(group, channel);
        }
    }
    Require(!VELHasLastError(), "all samples can be read");
    return bits;
}

// A data set that can be saved must open again with the same samples. Saving may fail, since a script may ask for a bit
// count that no file can have.
void CScript::CheckFile()
{
    VELGetLastError();
    ChangeOxdFilename(1, Files()[0].c_str());
    SaveOxdFile(1);
    if (VELHasLastError())
        return;
    const auto opened = OpenOxdFile(Files()[0].c_str());
    Require(opened != 0, "a saved file opens");
    Require(GetGroupCount(opened) == GetGroupCount(1), "a saved file opens with all groups");
    Require(TopBits(opened) == TopBits(1), "a saved file opens with all samples");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CScript({reinterpret_cast<const char*>(data), size}).Run();
    return 0;
}
