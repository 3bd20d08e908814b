// The fixture of all tests through the C interface: each test has a folder of its own, its files are closed when it
// ends, and failures are compared as texts. The stored error is one for the process, so that tests use a single thread.
#pragma once

#include "support/Bytes.h"
#include "support/Lines.h"

#include <VELOxdDll.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The range of raw samples.
constexpr std::int32_t lowest = -536870912;
constexpr std::int32_t highest = 536870911;

// The beginning of a header with one channel, whose keys follow.
inline const std::string oneChannel =
    "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=Scan\nGr0-Count=1\nGr0-Ch0=C\n[C]\n";

// Returns the message in a diagnostic text, or the whole text if it is not one.
inline std::string ReasonIn(const std::string& errorText)
{
    constexpr std::string_view label = "std::exception::what: ";
    const auto begin = errorText.find(label);
    if (begin == std::string::npos)
        return errorText;
    const auto from = begin + label.size();
    return errorText.substr(from, errorText.find('\n', from) - from);
}

// Returns the reason why the call failed, or an empty text if it succeeded.
template <class Call>
std::string ReasonOf(Call&& call)
{
    VELGetLastError();
    std::forward<Call>(call)();
    return VELHasLastError() ? ReasonIn(VELGetLastError()) : std::string();
}

class OxdTest : public ::testing::Test
{
protected:
    OxdTest()
    {
        // A process that had this number may have left a folder in which a program of its own is still ending.
        const std::string name = "veloxd-" + std::to_string(::getpid()) + "-";
        for (int attempt = 0; m_folder.empty() || !std::filesystem::create_directory(m_folder); ++attempt)
            m_folder = std::filesystem::temp_directory_path() / (name + std::to_string(attempt));
    }
    ~OxdTest() override
    {
        CloseAll();
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    // Writes a file of a header, given with LF line ends and written with CR LF, the end mark, and samples.
    std::string WriteOxd(std::string_view header, std::string_view samples = {},
                         const std::string& name = "in.oxd") const
    {
        WriteBytes(Path(name), WithCrLf(header).append("\r\n#!").append(samples));
        return Path(name);
    }

    // Each of these fails the test if its call fails. The handles are closed when the test ends.
    std::uint64_t Create(const std::string& name = "out.oxd") const
    {
        return Succeed(CreateOxdFile, Path(name).c_str());
    }
    static std::uint64_t Open(const std::string& path) { return Succeed(OpenOxdFile, path.c_str()); }
    static void Save(std::uint64_t handle)
    {
        EXPECT_EQ(ReasonOf([&] { SaveOxdFile(handle); }), "");
    }
    // Saves the data set as out.oxd and returns the bytes of that file.
    std::string Saved(std::uint64_t handle) const
    {
        ChangeOxdFilename(handle, Path("out.oxd").c_str());
        Save(handle);
        return ReadBytes(Path("out.oxd"));
    }
    static std::uint64_t CreateChannel(std::uint64_t handle, int bits, std::uint64_t points, std::uint64_t lines)
    {
        const auto group = Succeed(CreateGroup, handle, bits);
        SetChannelCount(handle, group, 1);
        SetChannelXYDimension(handle, group, 0, points, lines);
        EXPECT_FALSE(VELHasLastError());
        return group;
    }

    // Returns the reason why the file does not open, and closes all files.
    static std::string ReasonOfOpening(const std::string& path)
    {
        std::uint64_t handle = 0;
        std::string reason = ReasonOf([&] { handle = OpenOxdFile(path.c_str()); });
        EXPECT_EQ(handle == 0, !reason.empty());
        CloseAll();
        return reason;
    }

    static std::vector<std::int32_t> LineRaw(std::uint64_t handle, std::uint64_t group, std::uint64_t channel,
                                             std::uint64_t line, int lineOp = 0)
    {
        std::vector<std::int32_t> values(GetChannelData_PointsPerLine(handle, group, channel, line));
        values.reserve(1); // the pointer is not null even for an empty line
        EXPECT_EQ(ReasonOf([&] { GetChannelData_LineRaw(handle, group, channel, line, lineOp, values.data()); }), "");
        return values;
    }
    // Returns the text that a getter with these leading arguments writes to its buffer.
    template <class Getter, class... Arguments>
    static std::string Text(Getter getter, Arguments... arguments)
    {
        std::array<char, 4096> text{};
        getter(arguments..., text.data(), text.size());
        return text.data();
    }
    static std::string GroupName(std::uint64_t handle, std::uint64_t group)
    {
        return Text(GetGroupName, handle, group);
    }

    static constexpr std::uint64_t root = 1; // of the information tree

    // Returns all information as one text, with the content of each group in braces behind its name.
    // NOLINTNEXTLINE(misc-no-recursion): the trees of these tests are shallow
    static std::string Tree(std::uint64_t handle, std::uint64_t node = root)
    {
        std::string text;
        for (auto child = SelectFirstChildMetaInfoItem(handle, node); child != 0;
             child = SelectNextMetaInfoItem(handle, child)) {
            text += Text(GetMetaInfoItemName, handle, child);
            if (IsMetaInfoItemAGroup(handle, child))
                text.append("{").append(Tree(handle, child)).append("}");
            else
                text.append("=").append(Text(GetMetaInfoItemValue, handle, child)).append(";");
        }
        VELGetLastError();
        return text;
    }

private:
    template <class Function, class... Arguments>
    static std::uint64_t Succeed(Function function, Arguments... arguments)
    {
        std::uint64_t result = 0;
        EXPECT_EQ(ReasonOf([&] { result = function(arguments...); }), "");
        return result;
    }

    // No test uses more handles than this, including those of failed opens.
    static void CloseAll()
    {
        for (std::uint64_t handle = 1; handle < 64; ++handle)
            CloseOxdFile(handle);
    }

    std::filesystem::path m_folder;
};

// A fixture with a new data set.
class NewDataSetTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();
};
