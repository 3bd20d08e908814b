// Every function checks its arguments in the same order and says what is wrong in fixed words.
#include "support/Axes.h"
#include "support/OxdTest.h"

#include <array>
#include <functional>

namespace {

using Call = std::function<void(std::uint64_t handle, std::uint64_t group, std::uint64_t channel)>;

struct Function
{
    std::string action;
    Call call;
};

char textOut[64];
std::int32_t rawLine[4];
double realLine[4];

std::vector<Function> ChannelFunctions()
{
    std::vector<Function> f{
        {"delete channel", DeleteChannelBuffer},
        {"set channel points", [](auto h, auto g, auto c) { SetChannelData_Points(h, g, c, 4); }},
        {"get channel points", [](auto h, auto g, auto c) { EXPECT_EQ(GetChannelData_Points(h, g, c), 0U); }},
        {"get channel points", [](auto h, auto g, auto c) { GetChannelData_PointsPerLine(h, g, c, 0); }},
        {"set channel lines", [](auto h, auto g, auto c) { SetChannelData_Lines(h, g, c, 4); }},
        {"get channel lines", [](auto h, auto g, auto c) { EXPECT_EQ(GetChannelData_Lines(h, g, c), 0U); }},
        {"get channel point axis min", [](auto h, auto g, auto c) { GetChannelData_PointAxisMinPerLine(h, g, c, 0); }},
        {"get channel point axis range",
         [](auto h, auto g, auto c) { GetChannelData_PointAxisRangePerLine(h, g, c, 0); }},
        {"set channel line", [](auto h, auto g, auto c) { SetChannelData_LineRaw(h, g, c, 9, nullptr); }},
        {"set channel line", [](auto h, auto g, auto c) { SetChannelData_LineReal(h, g, c, 9, nullptr); }},
        {"get channel line", [](auto h, auto g, auto c) { GetChannelData_LineRaw(h, g, c, 0, 6, rawLine); }},
        {"get channel line", [](auto h, auto g, auto c) { GetChannelData_LineReal(h, g, c, 0, 6, realLine); }},
        {"set channel pixel", [](auto h, auto g, auto c) { SetChannelData_PixelRaw(h, g, c, 9, 9, 1); }},
        {"set channel pixel", [](auto h, auto g, auto c) { SetChannelData_PixelReal(h, g, c, 9, 9, 1); }},
        {"get channel pixel", [](auto h, auto g, auto c) { EXPECT_EQ(GetChannelData_PixelRaw(h, g, c, 0, 0, -1), 0); }},
        {"get channel pixel",
         [](auto h, auto g, auto c) { EXPECT_EQ(GetChannelData_PixelReal(h, g, c, 0, 0, -1), 0); }},
    };
    for (const AxisProperty& p : axisProperties) {
        f.push_back({"set channel " + std::string(p.text), [=](auto h, auto g, auto c) { p.setText(h, g, c, "t"); }});
        f.push_back(
            {"get channel " + std::string(p.text), [=](auto h, auto g, auto c) { p.getText(h, g, c, textOut, 64); }});
        f.push_back({"set channel " + std::string(p.number), [=](auto h, auto g, auto c) { p.setNumber(h, g, c, 1); }});
        f.push_back({"get channel " + std::string(p.number),
                     [=](auto h, auto g, auto c) { EXPECT_EQ(p.getNumber(h, g, c), 0); }});
    }
    return f;
}

std::vector<Function> SlotFunctions()
{
    return {{"evaluate channel", [](auto h, auto g, auto c) { EXPECT_FALSE(HasChannelBuffer(h, g, c)); }},
            {"set channel xy dimension", [](auto h, auto g, auto c) { SetChannelXYDimension(h, g, c, 2, 2); }}};
}

std::vector<Function> GroupFunctions()
{
    return {{"delete group", [](auto h, auto g, auto) { DeleteGroup(h, g); }},
            {"get logical group id", [](auto h, auto g, auto) { EXPECT_EQ(GetLogicalGroupId(h, g), 0U); }},
            {"set logical group id", [](auto h, auto g, auto) { SetLogicalGroupId(h, g, 1); }},
            {"get group name", [](auto h, auto g, auto) { GetGroupName(h, g, textOut, 0); }},
            {"set group name", [](auto h, auto g, auto) { SetGroupName(h, g, nullptr); }},
            {"get channel count", [](auto h, auto g, auto) { SetChannelCount(h, g, 1); }},
            {"get channel count", [](auto h, auto g, auto) { EXPECT_EQ(GetChannelCount(h, g), 0U); }}};
}

std::vector<Function> AllFunctions()
{
    std::vector<Function> all{{"", [](auto h, auto, auto) { EXPECT_EQ(GetGroupCount(h), 0U); }},
                              {"", [](auto h, auto, auto) { GetAllGroupIds(h, nullptr); }},
                              {"", [](auto h, auto, auto) { EXPECT_EQ(CreateGroup(h, 16), 0U); }},
                              {"", [](auto h, auto, auto) { EXPECT_EQ(GetGroupId(h, nullptr), 0U); }},
                              {"", [](auto h, auto, auto) { DeleteAllGroups(h); }},
                              {"", [](auto h, auto, auto) { SaveOxdFile(h); }},
                              {"", [](auto h, auto, auto) { ChangeOxdFilename(h, nullptr); }},
                              {"", [](auto h, auto, auto) { EXPECT_EQ(GetOxdVersion(h), 0); }}};
    for (const auto& some : {GroupFunctions(), SlotFunctions(), ChannelFunctions()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

class ArgumentTest : public OxdTest
{
};

TEST_F(ArgumentTest, AnUnknownHandleIsNamedBeforeAnythingElse)
{
    for (const Function& f : AllFunctions())
        EXPECT_EQ(ReasonOf([&] { f.call(77, 9, 9); }), "Handle does not exist") << f.action;
}

TEST_F(ArgumentTest, AMissingGroupIsNamedBeforeAMissingChannel)
{
    const auto handle = Create();
    for (const auto& some : {GroupFunctions(), SlotFunctions(), ChannelFunctions()}) {
        for (const Function& f : some)
            EXPECT_EQ(ReasonOf([&] { f.call(handle, 5, 9); }),
                      "Unable to " + f.action + ". No group with given index available. Index: 5");
    }
    EXPECT_EQ(ReasonOf([&] { DeleteGroup(handle, ~0ULL); }),
              "Unable to delete group. No group with given index available. Index: 18446744073709551615");
}

TEST_F(ArgumentTest, AnEmptySlotIsNoChannelAndOneThatDoesNotExistIsNoSlot)
{
    const auto handle = Create();
    SetChannelCount(handle, CreateGroup(handle, 16), 2);
    for (const Function& f : ChannelFunctions()) {
        const std::string action =
            f.action == "set channel signal axis name" ? "set channel sigal axis name" : f.action;
        EXPECT_EQ(ReasonOf([&] { f.call(handle, 0, 1); }),
                  "Unable to " + action + ". No channel with given name available. Index: 1");
    }
    EXPECT_EQ(ReasonOf([&] { EXPECT_FALSE(HasChannelBuffer(handle, 0, 1)); }), "");
    for (const Function& f : SlotFunctions())
        EXPECT_EQ(ReasonOf([&] { f.call(handle, 0, 2); }),
                  "Unable to " + f.action + ". No channel with given name available. Index: 2");
    EXPECT_EQ(GetChannelCount(handle, 0), 2U);
}

TEST_F(ArgumentTest, OneDimensionSettersCheckTheirLimitBeforeTheHandle)
{
    const auto handle = Create();
    const auto group = CreateChannel(handle, 16, 3, 2);
    EXPECT_EQ(ReasonOf([] { SetChannelData_Points(77, 0, 0, 65537); }),
              "Unable to set channel points. Value out of range. Min 0, Max 65536");
    EXPECT_EQ(ReasonOf([] { SetChannelData_Lines(77, 0, 0, 65537); }),
              "Unable to set channel lines. Value out of range. Min 0, Max 65536");
    EXPECT_EQ(ReasonOf([&] { SetChannelData_Points(handle, group, 0, 65536); }), "");
    EXPECT_EQ(ReasonOf([&] { SetChannelData_Lines(handle, group, 0, 0); }), "");
    EXPECT_EQ(GetChannelData_Points(handle, group, 0), 65536U);
    EXPECT_EQ(GetChannelData_Lines(handle, group, 0), 0U);
}

TEST_F(ArgumentTest, LinesOutsideTheChannelAndNullPointersAreFailuresOfTheirOwn)
{
    const auto handle = Create();
    const auto g = CreateChannel(handle, 16, 3, 2);
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"invalid map<K, T> key", [&] { GetChannelData_LineRaw(handle, g, 0, 9, 6, nullptr); }},
        {"invalid map<K, T> key", [&] { GetChannelData_PixelReal(handle, g, 0, 9, 9, -1); }},
        {"Unable to get channel line. Unknown error", [&] { GetChannelData_LineRaw(handle, g, 0, 2, 0, nullptr); }},
        {"Unable to get channel line. Unknown error", [&] { GetChannelData_LineReal(handle, g, 0, 2, 0, nullptr); }},
        {"Unable to get channel pixel. Unknown error", [&] { GetChannelData_PixelRaw(handle, g, 0, 3, 0, 0); }},
        {"Unable to get channel pixel. Unknown error", [&] { GetChannelData_PixelReal(handle, g, 0, 0, 2, 0); }},
        {"Unable to get channel pixel. Unknown error", [&] { GetChannelData_PixelRaw(handle, g, 0, 0, 0, 2); }},
        {"Unable to set channel line. Unknown error", [&] { SetChannelData_LineRaw(handle, g, 0, 2, nullptr); }},
        {"Unable to set channel line. Unknown error", [&] { SetChannelData_LineReal(handle, g, 0, 2, nullptr); }},
        {"Unable to set channel pixel. Unknown error", [&] { SetChannelData_PixelRaw(handle, g, 0, 3, 0, 1); }},
        {"Unable to set channel pixel. Unknown error", [&] { SetChannelData_PixelReal(handle, g, 0, 0, 2, 1); }},
        {"invalid vector<T> subscript", [&] { GetChannelData_PointsPerLine(handle, g, 0, 2); }},
        {"invalid vector<T> subscript", [&] { GetChannelData_PointAxisMinPerLine(handle, g, 0, 2); }},
        {"invalid vector<T> subscript", [&] { GetChannelData_PointAxisRangePerLine(handle, g, 0, 2); }},
        {"Null pointer", [] { EXPECT_EQ(OpenOxdFile(nullptr), 0U); }},
        {"Null pointer", [] { EXPECT_EQ(CreateOxdFile(nullptr), 0U); }},
        {"Null pointer", [&] { ChangeOxdFilename(handle, nullptr); }},
        {"Null pointer", [&] { GetAllGroupIds(handle, nullptr); }},
        {"Unable to get group index. Null pointer", [&] { GetGroupId(handle, nullptr); }},
        {"Unable to set group name. Null pointer", [&] { SetGroupName(handle, g, nullptr); }},
        {"Unable to get group name. Null pointer", [&] { GetGroupName(handle, g, nullptr, 64); }},
        {"Unable to set channel signal axis name. Null pointer",
         [&] { SetChannelData_SignalAxisName(handle, g, 0, nullptr); }},
        {"Unable to set channel line. Null pointer", [&] { SetChannelData_LineRaw(handle, g, 0, 0, nullptr); }},
        {"Unable to set channel line. Null pointer", [&] { SetChannelData_LineReal(handle, g, 0, 0, nullptr); }},
        {"Unable to get channel line. Null pointer", [&] { GetChannelData_LineRaw(handle, g, 0, 0, 0, nullptr); }},
        {"Unable to get channel line. Null pointer", [&] { GetChannelData_LineReal(handle, g, 0, 0, 0, nullptr); }},
    };
    for (const auto& [reason, call] : cases)
        EXPECT_EQ(ReasonOf(call), reason);
    EXPECT_EQ(Create("next.oxd"), handle + 1) << "a null name takes no handle number";
}

TEST_F(ArgumentTest, TextGettersNameTheSizeThatTheyNeed)
{
    const auto handle = Create();
    const auto group = CreateGroup(handle, 16);
    SetGroupName(handle, group, "Name");
    std::array<char, 8> buffer{"#######"};
    EXPECT_EQ(ReasonOf([&] { GetGroupName(handle, group, buffer.data(), 4); }),
              "Unable to get group name. Buffer to small. Minimum buffer size: 5");
    EXPECT_STREQ(buffer.data(), "#######");
    EXPECT_EQ(ReasonOf([&] { GetGroupName(handle, group, buffer.data(), 5); }), "");
    EXPECT_STREQ(buffer.data(), "Name");
    EXPECT_EQ(buffer[5], '#');
    buffer.fill('#');
    EXPECT_EQ(ReasonOf([&] { GetGroupName(handle, group, buffer.data(), 0); }), "") << "a size of 0 disables the check";
    EXPECT_STREQ(buffer.data(), "Name");
}

TEST_F(ArgumentTest, TheErrorFlagStaysUntilTheTextIsRead)
{
    CloseOxdFile(77);
    const std::string text = ReasonOf([] { GetGroupCount(77); });
    GetGroupCount(77);
    EXPECT_TRUE(VELHasLastError());
    const auto handle = CreateOxdFile(Path("x.oxd").c_str());
    GetGroupCount(handle);
    EXPECT_TRUE(VELHasLastError()) << "success clears nothing";
    EXPECT_EQ(ReasonIn(VELGetLastError()), text);
    EXPECT_FALSE(VELHasLastError());
    EXPECT_EQ(ReasonIn(VELGetLastError()), text) << "the text stays";
    CloseOxdFile(77);
    EXPECT_FALSE(VELHasLastError()) << "closing an unknown handle is no failure";
}

TEST_F(ArgumentTest, DiagnosticsNameThePlaceOfTheFailure)
{
    const auto handle = Create();
    VELGetLastError();
    GetGroupName(handle, 9, nullptr, 1);
    const std::string text = VELGetLastError();
    EXPECT_TRUE(text.starts_with("src/api/VELOxdDll.cpp(")) << text;
    EXPECT_NE(text.find(": Throw in function void GetGroupName(uint64_t, uint64_t, char*, uint64_t)\n"
                        "Dynamic exception type: "),
              std::string::npos)
        << text;
    GetGroupCount(77);
    EXPECT_TRUE(std::string(VELGetLastError()).starts_with("src/api/FileManager.cpp("));
    GetChannelData_PixelRaw(handle, CreateChannel(handle, 16, 1, 1), 0, 0, 0, 6);
    EXPECT_NE(std::string(VELGetLastError()).find("CNoMappingException"), std::string::npos);
}

} // namespace
