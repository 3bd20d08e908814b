// Damaged files: each ends in a stored error or in a data set that can be read, edited and saved.
#include "support/OxdTest.h"

namespace {

constexpr std::string_view version1 =
    "[DataSet]\r\nVersion=1\r\nChannelCount=1\r\nFrameCount=2\r\nCh0-Fr0=A\r\nCh0-Fr1=B\r\n"
    "[A]\r\nPoints=2\r\nLines=1\r\nDim0Unit=nm\r\nDim0Range=2.5\r\n[B]\r\nPoints=1\r\nLines=1\r\n\r\n#!123";
constexpr std::string_view version2 =
    "[DataSet]\r\nVersion=2\r\nGroupCount=2\r\nGr0-Name=S\r\nGr0-ID=3\r\nGr0-Count=2\r\nGr1-Count=1\r\nGr0-Ch1=A\r\n"
    "Gr1-Ch0=B\r\n[A]\r\nVersion=3\r\nPoints=2\r\nLines=2\r\nCurLine=1\r\nDim0Range=1e-6\r\nLineDim1Points=0\r\n"
    "SaveBits=16\r\n[B]\r\nVersion=2\r\nPoints=1\r\nLines=2\r\nDim2Unit=V\r\nSaveBits=8\r\n\r\n#!123456";

class DamageTest : public OxdTest
{
protected:
    // Buffers have exactly the sizes that the interface names, so that sanitizers see any byte too many.
    void ReadEverything(std::uint64_t handle) const
    {
        std::vector<std::uint64_t> groups(GetGroupCount(handle));
        GetAllGroupIds(handle, groups.data());
        for (const auto group : groups) {
            GroupName(handle, group);
            const auto channels = GetChannelCount(handle, group);
            for (std::uint64_t channel = 0; channel < channels && channel < 100; ++channel) {
                if (HasChannelBuffer(handle, group, channel))
                    ReadChannel(handle, group, channel);
            }
        }
    }

    static void ReadChannel(std::uint64_t handle, std::uint64_t group, std::uint64_t channel)
    {
        const auto points = GetChannelData_Points(handle, group, channel);
        const auto lines = GetChannelData_Lines(handle, group, channel);
        std::vector<std::int32_t> raw(points);
        std::vector<double> real(points);
        for (std::uint64_t line = 0; line < lines && line < 100; ++line) {
            for (int lineOp = 0; lineOp < 6; ++lineOp)
                GetChannelData_LineRaw(handle, group, channel, line, lineOp, raw.data());
            GetChannelData_LineReal(handle, group, channel, line, 0, real.data());
            GetChannelData_PixelRaw(handle, group, channel, 0, line, 1);
            SetChannelData_LineReal(handle, group, channel, line, real.data());
        }
    }

    // Whether the file opened. What opens can be saved, and what is saved opens.
    bool Try(std::string_view bytes)
    {
        WriteBytes(Path("in.oxd"), bytes);
        VELGetLastError();
        const auto handle = OpenOxdFile(Path("in.oxd").c_str());
        EXPECT_EQ(handle == 0, VELHasLastError());
        if (handle != 0) {
            ReadEverything(handle);
            ChangeOxdFilename(handle, Path("out.oxd").c_str());
            Save(handle);
            CloseOxdFile(handle);
            CloseOxdFile(Open(Path("out.oxd")));
        }
        CloseOxdFile(1);
        return handle != 0;
    }
};

TEST_F(DamageTest, EveryPrefixFailsOrOpensCleanly)
{
    for (const std::string_view whole : {version1, version2}) {
        const auto headerEnd = whole.find("#!") + 2;
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_EQ(Try(whole.substr(0, length)), length < headerEnd)
                << "no header opens as empty, cut samples do not open";
        EXPECT_TRUE(Try(whole));
    }
}

TEST_F(DamageTest, EveryDamagedByteFailsOrOpensCleanly)
{
    for (const std::string_view whole : {version1, version2}) {
        std::size_t opened = 0;
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const char damage : {'\0', '9', '-', '\n', ']', '\xFF'}) {
                std::string bytes(whole);
                bytes[at] = damage;
                opened += Try(bytes) ? 1 : 0;
            }
        }
        EXPECT_GT(opened, whole.size()) << "most damage is harmless";
        EXPECT_LT(opened, 6 * whole.size());
    }
}

} // namespace
