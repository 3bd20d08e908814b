// Every function checks its arguments in the same order and says what is wrong in fixed words.
#include "support/Axes.h"
#include "support/OxdTest.h"

#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace {

using Id = std::uint64_t;
using Call = std::function<void(Id handle, Id first, Id second)>;

// The function with the arguments that come behind handle, first and second, as far as it has these. It must fail.
template <class F, class... Rest>
Call With(F function, Rest... rest)
{
    const auto fail = [=](auto... where) {
        if constexpr (std::is_void_v<std::invoke_result_t<F, decltype(where)..., Rest...>>)
            function(where..., rest...);
        else
            EXPECT_EQ(static_cast<double>(function(where..., rest...)), 0);
    };
    return [=](Id handle, Id first, Id second) {
        if constexpr (std::is_invocable_v<F, Id, Id, Id, Rest...>)
            fail(handle, first, second);
        else if constexpr (std::is_invocable_v<F, Id, Id, Rest...>)
            fail(handle, first);
        else
            fail(handle);
    };
}

enum class Needs
{
    File,
    Group,
    Slot,
    Channel,
    Info,
    Item,
    Node
};

// With the last problem that it has when everything is there that it needs, if any.
struct Function
{
    Needs needs;
    std::string action;
    std::string problem;
    Call call;
};

char textOut[1];

std::vector<Function> Functions()
{
    using enum Needs;
    std::vector<Function> all{
        {File, "", "Null pointer", With(GetAllGroupIds, nullptr)},
        {File, "", "Null pointer", With(ChangeOxdFilename, nullptr)},
        {File, "get group index", "Null pointer", With(GetGroupId, nullptr)},
        {File, "create info", "Null pointer", With(CreateInfoGroupWithName, nullptr)},
        {File, "get info index", "Null pointer", With(GetInfoGroupIndex, nullptr)},
        {Group, "delete group", "", With(DeleteGroup)},
        {Group, "get logical group id", "", With(GetLogicalGroupId)},
        {Group, "set logical group id", "", With(SetLogicalGroupId, 1U)},
        {Group, "get group name", "Null pointer", With(GetGroupName, nullptr, 64U)},
        {Group, "set group name", "Null pointer", With(SetGroupName, nullptr)},
        {Group, "get channel count", "", With(SetChannelCount, 1U)},
        {Group, "get channel count", "", With(GetChannelCount)},
        {Slot, "evaluate channel", "", With(HasChannelBuffer)},
        {Slot, "set channel xy dimension", "", With(SetChannelXYDimension, 2U, 2U)},
        {Channel, "delete channel", "", With(DeleteChannelBuffer)},
        {Channel, "set channel points", "", With(SetChannelData_Points, 4U)},
        {Channel, "get channel points", "", With(GetChannelData_Points)},
        {Channel, "get channel points", "", With(GetChannelData_PointsPerLine, 0U)},
        {Channel, "set channel lines", "", With(SetChannelData_Lines, 4U)},
        {Channel, "get channel lines", "", With(GetChannelData_Lines)},
        {Channel, "get channel point axis min", "", With(GetChannelData_PointAxisMinPerLine, 0U)},
        {Channel, "get channel point axis range", "", With(GetChannelData_PointAxisRangePerLine, 0U)},
        {Channel, "set channel line", "Unknown error", With(SetChannelData_LineRaw, 2U, nullptr)},
        {Channel, "set channel line", "Null pointer", With(SetChannelData_LineRaw, 0U, nullptr)},
        {Channel, "set channel line", "Unknown error", With(SetChannelData_LineReal, 2U, nullptr)},
        {Channel, "set channel line", "Null pointer", With(SetChannelData_LineReal, 0U, nullptr)},
        {Channel, "get channel line", "Unknown error", With(GetChannelData_LineRaw, 2U, 0, nullptr)},
        {Channel, "get channel line", "Null pointer", With(GetChannelData_LineRaw, 0U, 0, nullptr)},
        {Channel, "get channel line", "Unknown error", With(GetChannelData_LineReal, 2U, 0, nullptr)},
        {Channel, "get channel line", "Null pointer", With(GetChannelData_LineReal, 0U, 0, nullptr)},
        {Channel, "set channel pixel", "Unknown error", With(SetChannelData_PixelRaw, 3U, 0U, 1)},
        {Channel, "set channel pixel", "Unknown error", With(SetChannelData_PixelReal, 0U, 2U, 1.0)},
        {Channel, "get channel pixel", "Unknown error", With(GetChannelData_PixelRaw, 3U, 0U, 0)},
        {Channel, "get channel pixel", "Unknown error", With(GetChannelData_PixelRaw, 0U, 0U, 2)},
        {Channel, "get channel pixel", "Unknown error", With(GetChannelData_PixelReal, 0U, 2U, 0)},
        {Info, "delete info", "", With(DeleteInfoGroup)},
        {Info, "get info name", "Null pointer", With(GetInfoGroupName, nullptr, 6U)},
        {Info, "set info name", "Null pointer", With(SetInfoGroupName, nullptr)},
        {Info, "set new info index", "", With(SetInfoGroupNewIndex, 99U)},
        {Info, "get info item count", "", With(GetInfoItemCount)},
        {Info, "create info item", "Null pointer", With(CreateInfoItem, "n", nullptr)},
        {Info, "create info item", "Null pointer", With(CreateInfoItem, nullptr, nullptr)},
        {Info, "get info item index", "Null pointer", With(GetInfoItemIndex, nullptr)},
        {Info, "delete all info items", "", With(DeleteAllInfoItems)},
        {Item, "set info item value", "Null pointer", With(SetInfoItemValue, nullptr)},
        {Item, "get info item value", "Buffer to small. Minimum buffer size: 6", With(GetInfoItemValue, textOut, 1U)},
        {Item, "set info item name", "Null pointer", With(SetInfoItemName, nullptr)},
        {Item, "get info item name", "Buffer to small. Minimum buffer size: 5", With(GetInfoItemName, textOut, 1U)},
        {Item, "delete info item", "", With(DeleteInfoItem)},
        {Node, "get info item child count", "", With(GetMetaInfoItemChildCount)},
        {Node, "get info item name", "Buffer to small. Minimum buffer size: 5", With(GetMetaInfoItemName, textOut, 1U)},
        {Node, "set info item name", "Null pointer", With(SetMetaInfoItemName, nullptr)},
        {Node, "get info item value", "Buffer to small. Minimum buffer size: 6",
         With(GetMetaInfoItemValue, textOut, 1U)},
        {Node, "set info item value", "Null pointer", With(SetMetaInfoItemValue, nullptr)},
        {Node, "select first child of info item", "", With(SelectFirstChildMetaInfoItem)},
        {Node, "select next info item", "", With(SelectNextMetaInfoItem)},
        {Node, "select parent of info item", "", With(SelectParentMetaInfoItem)},
        {Node, "add info item", "", With(AddMetaInfoItem, "n", "v")},
        {Node, "add info item", "", With(AddMetaInfoItemGroup, "n")},
        {Node, "delete info item", "", With(DeleteMetaInfoItem)},
    };
    for (const AxisProperty& p : axisProperties) {
        all.push_back({Channel, std::string("set channel ") + p.text, "Null pointer", With(p.setText, nullptr)});
        all.push_back({Channel, std::string("get channel ") + p.text, "Null pointer", With(p.getText, nullptr, 64U)});
        all.push_back({Channel, std::string("set channel ") + p.number, "", With(p.setNumber, 1.0)});
        all.push_back({Channel, std::string("get channel ") + p.number, "", With(p.getNumber)});
    }
    return all;
}

using ArgumentTest = NewDataSetTest;

TEST_F(ArgumentTest, TheFirstProblemIsNamed)
{
    SetChannelCount(handle, CreateGroup(handle, 16), 2);
    SetChannelXYDimension(handle, 0, 0, 3, 2);
    CreateInfoItem(handle, CreateInfoGroupWithName(handle, "Group"), "Name", "Value");
    const auto group = SelectFirstChildMetaInfoItem(handle, root);
    const Id item = SelectFirstChildMetaInfoItem(handle, group);
    const auto dead = AddMetaInfoItemGroup(handle, root, "dead");
    const auto below = AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, dead, "S"), "i", "v");
    const auto other = Create("other.oxd");
    const auto foreign = AddMetaInfoItemGroup(other, root, "F");
    const auto refound = SelectFirstChildMetaInfoItem(handle, dead);
    DeleteMetaInfoItem(handle, dead);
    for (const Function& f : Functions()) {
        const std::string unable = f.action.empty() ? "" : "Unable to " + f.action + ". ";
        const auto expect = [&](Id first, Id second, const std::string& reason) {
            EXPECT_EQ(ReasonOf([&] { f.call(handle, first, second); }), unable + reason) << first;
        };
        EXPECT_EQ(ReasonOf([&] { f.call(77, 9, 9); }), "Handle does not exist") << unable;
        switch (f.needs) {
        case Needs::File:
            break;
        case Needs::Node:
            for (const Id node : {dead, below, refound, foreign, Id{0}, ~Id{0}})
                expect(node, 0, "Unknown error");
            break;
        case Needs::Item:
            expect(0, 5, "No info item with given index available. Index: 5");
            [[fallthrough]];
        case Needs::Info:
            expect(0x9'0000'0001, 9, "No info with given index available. Index: 38654705665");
            break;
        default:
            expect(5, 9, "No group with given index available. Index: 5");
        }
        if (f.needs == Needs::Slot)
            expect(0, 2, "No channel with given name available. Index: 2");
        if (f.needs == Needs::Channel && f.action != "set channel signal axis name")
            expect(0, 1, "No channel with given name available. Index: 1");
        if (!f.problem.empty())
            expect(f.needs == Needs::Node ? item : 0, 0, f.problem);
    }
    EXPECT_EQ(ReasonOf([&] { SetChannelData_SignalAxisName(handle, 0, 1, ""); }),
              "Unable to set channel sigal axis name. No channel with given name available. Index: 1");
    for (const Call& call : {With(GetChannelData_PointsPerLine, 2U), With(GetChannelData_PointAxisMinPerLine, 2U),
                             With(GetChannelData_PointAxisRangePerLine, 2U)})
        EXPECT_EQ(ReasonOf([&] { call(handle, 0, 0); }), "invalid vector<T> subscript");
    for (const Call& call :
         {With(GetChannelData_LineRaw, 2U, 6, nullptr), With(GetChannelData_LineReal, 2U, 6, nullptr),
          With(GetChannelData_PixelReal, 9U, 9U, -1)}) {
        EXPECT_NE(ReasonOf([&] { call(handle, 0, 1); }), "invalid map<K, T> key") << "there is no channel";
        EXPECT_EQ(ReasonOf([&] { call(handle, 0, 0); }), "invalid map<K, T> key");
    }
    EXPECT_EQ(GetChannelCount(handle, 0), 2U);
    EXPECT_EQ(GetMetaInfoItemChildCount(handle, root), 1U);
    EXPECT_EQ(GetInfoItemCount(handle, 0), 1U);
    for (const Call& call : {With(GetGroupCount), With(CreateGroup, 16), With(DeleteAllGroups), With(SaveOxdFile),
                             With(GetOxdVersion), With(GetInfoGroupCount), With(CreateInfoGroup),
                             With(DeleteAllInfoGroups), With(GetMetaInfoTreeRootHandle), With(DeleteAllMetaInfoItems)})
        EXPECT_EQ(ReasonOf([&] { call(77, 9, 9); }), "Handle does not exist");
    EXPECT_EQ(ReasonOf([] { SetChannelData_Points(77, 0, 0, 65537); }),
              "Unable to set channel points. Value out of range. Min 0, Max 65536");
    EXPECT_EQ(ReasonOf([] { SetChannelData_Lines(77, 0, 0, 65537); }),
              "Unable to set channel lines. Value out of range. Min 0, Max 65536");
    EXPECT_EQ(ReasonOf([&] { GetInfoGroupName(handle, 0, textOut, 5); }),
              "Unable to get info item value. Buffer to small. Minimum buffer size: 6");
    for (const Call& call : {With(AddMetaInfoItem, nullptr, "v"), With(AddMetaInfoItemGroup, nullptr)})
        EXPECT_EQ(ReasonOf([&] { call(handle, group, 9); }), "Unable to add info item. Null pointer");
    for (const auto& call : {OpenOxdFile, CreateOxdFile})
        EXPECT_EQ(ReasonOf([&] { EXPECT_EQ(call(nullptr), 0U); }), "Null pointer");
    EXPECT_EQ(Create("next.oxd"), other + 1) << "a null name takes no handle number";
    CloseOxdFile(other);
    EXPECT_EQ(ReasonOf([&] { IsMetaInfoItemAGroup(other, foreign); }), "Unable to evaluate info item. Unknown error");
    EXPECT_NE(AddMetaInfoItemGroup(handle, root, "new"), dead) << "handles are not given out again";
}

TEST_F(ArgumentTest, TextGettersNameTheSizeThatTheyNeed)
{
    SetGroupName(handle, CreateGroup(handle, 16), "Name");
    std::string buffer = "#######";
    EXPECT_EQ(ReasonOf([&] { GetGroupName(handle, 0, buffer.data(), 4); }),
              "Unable to get group name. Buffer to small. Minimum buffer size: 5");
    EXPECT_EQ(buffer, "#######");
    for (const std::uint64_t size : {5U, 0U}) { // 0 disables the check
        buffer = "#######";
        EXPECT_EQ(ReasonOf([&] { GetGroupName(handle, 0, buffer.data(), size); }), "");
        EXPECT_EQ(buffer, std::string("Name\0##", 7));
    }
}

TEST_F(ArgumentTest, TheErrorFlagStaysUntilTheTextIsRead)
{
    CloseOxdFile(77);
    EXPECT_FALSE(VELHasLastError()) << "closing an unknown handle is no failure";
    const std::string text = ReasonOf([] { GetGroupCount(77); });
    GetGroupCount(77);
    EXPECT_TRUE(VELHasLastError());
    GetGroupCount(handle);
    EXPECT_TRUE(VELHasLastError()) << "success clears nothing";
    EXPECT_EQ(ReasonIn(VELGetLastError()), text);
    EXPECT_FALSE(VELHasLastError());
    EXPECT_EQ(ReasonIn(VELGetLastError()), text) << "the text stays";
}

TEST_F(ArgumentTest, DiagnosticsNameTheFileAndTheFunctionThatFailed)
{
    const auto unsavable = Create("no-folder/out.oxd");
    const std::string missing = Path("missing.oxd");
    const std::tuple<std::function<void()>, std::string, std::string> cases[] = {
        {[&] { GetGroupName(handle, 9, nullptr, 1); }, "VELOxdDll", "GetGroupName"},
        {[&] { GetGroupCount(77); }, "FileManager", "GetFileHandleStruct"},
        {[&] { OpenOxdFile(missing.c_str()); }, "FileManager", "OpenOxdFile"},
        {[&] { SaveOxdFile(unsavable); }, "FileManager", "SaveOxdFile"},
    };
    for (const auto& [call, file, function] : cases) {
        call();
        const std::string text = VELGetLastError();
        const std::string place = text.substr(0, text.find("\nDynamic exception type: "));
        EXPECT_TRUE(place.starts_with("src/api/" + file + ".cpp(")) << text;
        EXPECT_NE(place.find(function), std::string::npos) << text;
    }
    GetChannelData_PixelRaw(handle, CreateChannel(handle, 16, 1, 1), 0, 0, 0, 6);
    EXPECT_NE(std::string(VELGetLastError()).find("CNoMappingException"), std::string::npos);
}

} // namespace
