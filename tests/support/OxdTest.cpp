#include "support/OxdTest.h"

#include "support/Lines.h"

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

// More handles than any test uses: numbers of failed opens are among them.
constexpr std::uint64_t handlesToClose = 64;

} // namespace

std::string ReasonIn(const std::string& errorText)
{
    constexpr std::string_view label = "std::exception::what: ";
    const auto begin = errorText.find(label);
    if (begin == std::string::npos)
        return errorText;
    const auto from = begin + label.size();
    return errorText.substr(from, errorText.find('\n', from) - from);
}

OxdTest::OxdTest()
{
    const auto* const info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "." + info->name() + "." + std::to_string(::getpid());
    m_folder = fs::temp_directory_path() / ("veloxd-" + name);
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
}

OxdTest::~OxdTest()
{
    for (std::uint64_t handle = 1; handle < handlesToClose; ++handle)
        CloseOxdFile(handle);
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

void OxdTest::WriteBytes(const std::string& path, std::string_view bytes) const
{
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string OxdTest::ReadBytes(const std::string& path) const
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string OxdTest::WriteOxd(std::string_view header, std::string_view samples, const std::string& name) const
{
    WriteBytes(Path(name), WithCrLf(header).append("\r\n#!").append(samples));
    return Path(name);
}

std::uint64_t OxdTest::Create(const std::string& name)
{
    std::uint64_t handle = 0;
    EXPECT_EQ(ReasonOf([&] { handle = CreateOxdFile(Path(name).c_str()); }), "");
    return handle;
}

std::uint64_t OxdTest::Open(const std::string& path)
{
    std::uint64_t handle = 0;
    EXPECT_EQ(ReasonOf([&] { handle = OpenOxdFile(path.c_str()); }), "");
    return handle;
}

void OxdTest::Save(std::uint64_t handle) const
{
    EXPECT_EQ(ReasonOf([&] { SaveOxdFile(handle); }), "");
}

std::uint64_t OxdTest::CreateChannel(std::uint64_t handle, int bits, std::uint64_t points, std::uint64_t lines) const
{
    std::uint64_t group = 0;
    EXPECT_EQ(ReasonOf([&] {
                  group = CreateGroup(handle, bits);
                  SetChannelCount(handle, group, 1);
                  SetChannelXYDimension(handle, group, 0, points, lines);
              }),
              "");
    return group;
}

std::string OxdTest::ReasonOfOpening(const std::string& path)
{
    std::uint64_t handle = 0;
    std::string reason = ReasonOf([&] { handle = OpenOxdFile(path.c_str()); });
    EXPECT_EQ(handle == 0, !reason.empty());
    for (std::uint64_t used = 1; used < handlesToClose; ++used)
        CloseOxdFile(used);
    return reason;
}

std::vector<std::int32_t> OxdTest::LineRaw(std::uint64_t handle, std::uint64_t group, std::uint64_t channel,
                                           std::uint64_t line, int lineOp)
{
    const auto points = GetChannelData_PointsPerLine(handle, group, channel, line);
    std::vector<std::int32_t> values(points);
    values.reserve(1); // no null pointer, even for an empty line
    EXPECT_EQ(ReasonOf([&] { GetChannelData_LineRaw(handle, group, channel, line, lineOp, values.data()); }), "");
    return values;
}

// NOLINTNEXTLINE(misc-no-recursion): the trees of these tests are shallow
std::string OxdTest::Tree(std::uint64_t handle, std::uint64_t node)
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
