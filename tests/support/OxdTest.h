// What tests of the C interface share: files in a folder of the test's own, handles that get closed, failures as texts.
#pragma once

#include <VELOxdDll.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Of a diagnostic text the message, else the text itself.
std::string ReasonIn(const std::string& errorText);

// The reason for which the call failed, empty when it did not.
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
    OxdTest();
    ~OxdTest() override;

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    void WriteBytes(const std::string& path, std::string_view bytes) const;
    std::string ReadBytes(const std::string& path) const;

    // A header with LF line ends, written with CR LF, the mark behind it, and samples.
    std::string WriteOxd(std::string_view header, std::string_view samples = {},
                         const std::string& name = "in.oxd") const;

    // Each fails the test when the call fails, and the handle is closed with the test.
    std::uint64_t Create(const std::string& name = "out.oxd");
    std::uint64_t Open(const std::string& path);
    void Save(std::uint64_t handle) const;
    std::uint64_t CreateChannel(std::uint64_t handle, int bits, std::uint64_t points, std::uint64_t lines) const;

    // A handle whose file is open, or the reason why it is not. Handles of failed opens are closed, too.
    std::string ReasonOfOpening(const std::string& path);

    static std::vector<std::int32_t> LineRaw(std::uint64_t handle, std::uint64_t group, std::uint64_t channel,
                                             std::uint64_t line, int lineOp = 0);
    // What a text getter writes to the buffer that comes behind these arguments.
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
    static constexpr std::uint64_t root = 1; // of the information's tree

    // All information as one text: groups in braces behind their names.
    static std::string Tree(std::uint64_t handle, std::uint64_t node = root);

private:
    std::filesystem::path m_folder;
};
