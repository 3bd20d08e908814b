// Opening a file, and the names of what is in it, whatever room there is for them.
#include "support/OxdTest.h"

#include <veloxd_blocks.h>

namespace {

constexpr std::size_t groupTexts = 3 + 1 + 5; // the names below, with their ends

using List = std::pair<std::vector<std::uint64_t>, std::string>;

class NameListTest : public NewDataSetTest
{
protected:
    NameListTest()
    {
        for (const char* name : {"No", "", "Four"})
            SetGroupName(handle, CreateGroup(handle, 16), name);
        SetChannelCount(handle, 1, 7);
        for (const auto& [slot, name] : channels) {
            SetChannelXYDimension(handle, 1, slot, 1, 1);
            SetChannelData_SignalAxisName(handle, 1, slot, name.c_str());
        }
        EXPECT_FALSE(VELHasLastError());
    }

    const std::vector<std::pair<std::uint64_t, std::string>> channels = {
        {1, "Abc"}, {2, ""}, {4, ""}, {5, "\xC2\xB5"}, {6, std::string(59, 'x')}};
};

// Lists with room for so much, and with guards behind the arrays. The result is that of the call.
template <class Call>
std::int32_t ListIn(std::size_t room, std::size_t size, Call call, List& list, VELBlockNames& names)
{
    std::vector<std::uint64_t> numbers(room + 1, 77);
    std::string texts(size + 1, '#');
    names = {room, size, numbers.data(), texts.data(), 0, 0};
    const std::int32_t result = call(names);
    EXPECT_EQ(numbers[room], 77U);
    EXPECT_EQ(texts[size], '#');
    EXPECT_FALSE(VELHasLastError());
    if (result == VEL_BLOCK_OK) {
        numbers.resize(names.count);
        texts.resize(names.bytes);
        list = {numbers, texts};
    }
    return result;
}

TEST_F(NameListTest, NamesAreListedOnceThereIsRoomForAllAndNeverBeyondTheArrays)
{
    const auto expectList = [](auto call, const List& expected) {
        const auto [count, bytes] = std::pair(expected.first.size(), expected.second.size());
        for (std::size_t room = 0; room < count + 2; ++room) {
            for (std::size_t size = 0; size < bytes + 2; ++size) {
                List list;
                VELBlockNames names{};
                const std::int32_t result = ListIn(room, size, call, list, names);
                EXPECT_EQ(result, room >= count && size >= bytes ? VEL_BLOCK_OK : VEL_BLOCK_TOO_SMALL);
                if (result == VEL_BLOCK_OK)
                    EXPECT_EQ(list, expected);
                else
                    EXPECT_TRUE(names.count > room || names.bytes > size) << room << ' ' << size;
            }
        }
    };
    std::string texts;
    std::vector<std::uint64_t> slots;
    for (const auto& [slot, name] : channels) {
        slots.push_back(slot);
        texts.append(name).push_back('\0');
    }
    expectList([this](VELBlockNames& names) { return VELBlockGroups(handle, &names); },
               {{0, 1, 2}, std::string("No\0\0Four\0", groupTexts)});
    expectList([this](VELBlockNames& names) { return VELBlockChannels(handle, 1, &names); }, {slots, texts});
    expectList([this](VELBlockNames& names) { return VELBlockChannels(handle, 0, &names); }, {});
}

TEST_F(NameListTest, WhatIsNotThereHasNoNames)
{
    VELBlockNames names{};
    EXPECT_EQ(VELBlockGroups(handle + 1, &names), VEL_BLOCK_FAILED);
    EXPECT_EQ(VELBlockChannels(handle, 3, &names), VEL_BLOCK_FAILED);
    EXPECT_EQ(ReasonIn(VELGetLastError()),
              "Unable to get channel count. No group with given index available. Index: 3");
    EXPECT_FALSE(VELHasLastError());
    EXPECT_EQ(VELBlockGroups(handle, nullptr), VEL_BLOCK_BAD_CALL);
    EXPECT_EQ(VELBlockChannels(handle, 0, nullptr), VEL_BLOCK_BAD_CALL);
    names.size = 1;
    EXPECT_EQ(VELBlockGroups(handle, &names), VEL_BLOCK_BAD_CALL) << "an array is not there";
}

class OpeningTest : public OxdTest
{
};

TEST_F(OpeningTest, AFileOpensOrItsFailureComesWithTheHandleThatItKeeps)
{
    const std::string header = oneChannel + "Version=2\nPoints=1\nLines=2\nSaveBits=8\n";
    std::uint64_t file = 0;
    EXPECT_EQ(VELBlockOpen(WriteOxd(header, "ab").c_str(), &file), VEL_BLOCK_OK);
    EXPECT_EQ(file, 1U);
    EXPECT_EQ(VELBlockOpen(WriteOxd(header, "a").c_str(), &file), VEL_BLOCK_FAILED);
    EXPECT_EQ(file, 2U);
    EXPECT_EQ(GetChannelData_PointsPerLine(file, 0, 0, 0), 1U) << "what was loaded";
    CloseOxdFile(1); // so that the lowest number is free, and not that behind the last
    WriteBytes(Path("none.oxd"), "no header");
    EXPECT_EQ(VELBlockOpen(Path("none.oxd").c_str(), &file), VEL_BLOCK_NO_HEADER);
    EXPECT_EQ(file, 1U);
    EXPECT_EQ(VELBlockOpen(Path("missing.oxd").c_str(), &file), VEL_BLOCK_FAILED);
    EXPECT_EQ(file, 3U);
    EXPECT_EQ(VELBlockOpen(nullptr, &file), VEL_BLOCK_FAILED);
    EXPECT_EQ(file, 0U);
    EXPECT_EQ(VELBlockOpen("", nullptr), VEL_BLOCK_BAD_CALL);
    EXPECT_FALSE(VELHasLastError());
    EXPECT_EQ(GetGroupCount(3), 0U);
    EXPECT_FALSE(VELHasLastError()) << "a failed opening keeps its handle, too";
}

} // namespace
