// Information in files: flat lists, trees, and what neither could hold as it is.
#include "support/Lines.h"
#include "support/OxdTest.h"

#include <tuple>

namespace {

constexpr std::string_view empty = "[DataSet]\r\nVersion=2\r\nGroupCount=0\r\n";

class InfoFileTest : public OxdTest
{
protected:
    // Expects that what is saved reads as `expected`, again and again, in the same bytes from the second time on.
    void ExpectStable(std::uint64_t created, const std::string& expected)
    {
        Saved(created);
        std::string previous;
        for (int round = 0; round < 4; ++round) {
            const auto handle = Open(Path("out.oxd"));
            EXPECT_EQ(Tree(handle), expected) << round;
            const std::string bytes = Saved(handle);
            CloseOxdFile(handle);
            EXPECT_TRUE(round == 0 || bytes == previous) << bytes;
            previous = bytes;
        }
    }

    std::string TreeOf(const std::string& header) { return Tree(Open(WriteOxd(header))); }
};

TEST_F(InfoFileTest, GroupsOfTheInfoFunctionsAreAFlatListAndGroupsOfTheTreeAreSections)
{
    const auto handle = Create();
    const auto scan = AddMetaInfoItemGroup(handle, root, "Scan");
    AddMetaInfoItem(handle, scan, "Gain", "5");
    AddMetaInfoItemGroup(handle, scan, "Head");
    AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, scan, "Piezo"), "Range", "2 \xC2\xB5m");
    CreateInfoItem(handle, CreateInfoGroupWithName(handle, "Tool"), "Tip", "sharp");
    CreateInfoItem(handle, CreateInfoGroupWithName(handle, "Spec"), "Mod", "a=b");
    EXPECT_EQ(Saved(handle),
              std::string(empty) +
                  "SetInfos=DataSet-Info\r\nInfoSetCount=1\r\nInfoSet0=Scan\r\n"
                  "[DataSet-Info]\r\n-- Tool --=--------\r\nTip=sharp\r\n-- Spec --=--------\r\nMod=a=b\r\n"
                  "[DataSet\\Scan]\r\nSubSectionCount=2\r\nSubSection0=Head\r\nSubSection1=Piezo\r\nGain=5\r\n"
                  "[DataSet\\Scan\\Head]\r\nSubSectionCount=0\r\n"
                  "[DataSet\\Scan\\Piezo]\r\nSubSectionCount=0\r\nRange=2 \xC2\xB5m\r\n\r\n#!");
    ExpectStable(handle, "Tool{Tip=sharp;}Spec{Mod=a=b;}Scan{Head{}Piezo{Range=2 \xC2\xB5m;}Gain=5;}");
}

TEST_F(InfoFileTest, WhatAFlatListCouldNotGiveBackIsSavedAsTrees)
{
    using Items = std::vector<std::pair<const char*, const char*>>;
    for (const auto& [group, items, readBack] : {std::tuple("G", Items{{"a", "1"}, {"A", "2"}}, "G{a=1;A_2=2;}T{x=1;}"),
                                                 {"t", {{"y", "1"}}, "t{y=1;}T_2{x=1;}"},
                                                 {"G", {{"x", "1"}}, "G{x=1;}T{x=1;}"},
                                                 {"G", {{"--\nh --", "1"}, {"y", "2"}}, "G{-- h --=1;y=2;}T{x=1;}"},
                                                 {"G", {{"Tip\nPotential", "1"}}, "G{Tip Potential=1;}T{x=1;}"},
                                                 {"G=H", {{"y", "1"}}, "G=H{y=1;}T{x=1;}"},
                                                 {"G", {{"a=b", "1"}, {"a", "2"}}, "G{a=b=1;a_2=2;}T{x=1;}"},
                                                 {"A\\B ", {{"offsety", "1"}}, "A\\B{offsety=1;}T{x=1;}"}}) {
        const auto handle = Create();
        const auto info = CreateInfoGroupWithName(handle, group);
        for (const auto& [name, value] : items)
            CreateInfoItem(handle, info, name, value);
        CreateInfoItem(handle, CreateInfoGroupWithName(handle, "T"), "x", "1");
        ExpectStable(handle, readBack);
        EXPECT_EQ(ReadBytes(Path("out.oxd")).find("SetInfos"), std::string::npos) << readBack;
        CloseOxdFile(handle);
    }
}

TEST_F(InfoFileTest, CollidingNamesGetNumbersAndNothingIsLost)
{
    const auto handle = Create();
    for (const char* name : {"A\nB", "A B", "#!", "# !"})
        CreateInfoItem(handle, CreateInfoGroupWithName(handle, name), "i", name);
    ExpectStable(handle, "A B{i=A B;}A B_2{i=A B;}# !{i=# !;}# !_2{i=# !;}");
    DeleteAllInfoGroups(handle);
    const auto a = AddMetaInfoItemGroup(handle, root, "A");
    AddMetaInfoItemGroup(handle, root, "A\\B");
    AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, a, "B"), "i", "1");
    AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, a, "b "), "i", "2");
    for (const char* name : {"k", "K", "k_2", "SubSection0", "SubSectionCount"})
        AddMetaInfoItem(handle, a, name, name);
    AddMetaInfoItem(handle, a, "[head", "x]");
    AddMetaInfoItem(handle, a, "", "unnamed");
    AddMetaInfoItem(handle, a, "line\nbreak", "a#!b ");
    ExpectStable(handle,
                 "A{B_2{i=1;}b_3{i=2;}k=k;K_2=K;k_2_2=k_2;SubSection0_2=SubSection0;SubSectionCount_2=SubSectionCount;"
                 " [head=x]; =unnamed;line break=a# !b;}A\\B{}");
    DeleteAllInfoGroups(handle);
    const auto g = AddMetaInfoItemGroup(handle, root, "G");
    AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, g, ""), "i", "1");
    AddMetaInfoItem(handle, g, "SubSection0", "no link");
    ExpectStable(handle, "G{{i=1;}SubSection0_2=no link;}");
}

TEST_F(InfoFileTest, HeaderLinesBeginGroupsAndListsWithoutThemAreSortedIntoGroups)
{
    const std::string v1 = "[DataSet]\nChannelCount=1\nFrameCount=1\nCh0-Fr0=C\n[C]\n";
    const std::string v2 = "[DataSet]\nVersion=2\nSetInfos=I\n";
    const std::string items = "Other=0\nscansize=1\nGapVoltage2=2\nTip Potential=3\nMod=4\nPointsAbort=5\nMeasurement "
                              "aborted=6\nMod=7\nX=8\n";
    EXPECT_EQ(TreeOf(v2 + "[I]\n" + items),
              "Tool{Other=0;}Scan{Image size=1;GapVoltage2=2;}Approach{Tip voltage=3;PointsAbort=5;}"
              "Spec{Measurement aborted=6;Mod=7;X=8;}");
    for (const char* const section : {"[SetInfos]\n", "[DataSet]\nSetInfos=I\n[I]\n"})
        EXPECT_EQ(TreeOf(v1 + section + items),
                  "Tool{Other=0;}Scan{Image size=1;}Approach{GapVoltage2=2;Tip voltage=3;}"
                  "Spec{PointsAbort=5;Measurement aborted=6;Mod=7;X=8;}");
    EXPECT_EQ(TreeOf(v2), "");
    EXPECT_EQ(TreeOf(v2 + "[I]\nImage size=1\n-- H --=x\na=2\n"), "Scan{Image size=1;}H{a=2;}");
    EXPECT_EQ(TreeOf(v2 + "[I]\n-- Scan --=x\nImage size=1\nMod=2\n-- B!!!=\n-- b###=y\nz=3\n"),
              "Scan{Image size=1;Mod=2;}b{z=3;}");
    EXPECT_EQ(TreeOf(v2 + "[I]\n-- =x\na=1\n-- ab=x\nb=2\n"), "{a=1;}{b=2;}") << "a header too short for a name";
}

TEST_F(InfoFileTest, HandlesOfNodesThatWereReadEndWithThem)
{
    const auto handle =
        Open(WriteOxd("[DataSet]\nVersion=2\nSetInfos=I\nInfoSetCount=1\nInfoSet0=T\n[I]\n-- G --=\na=1\n"
                      "[DataSet\\T]\nb=2\n"));
    for (int group = 0; group < 2; ++group) {
        const auto item = SelectFirstChildMetaInfoItem(handle, SelectFirstChildMetaInfoItem(handle, 1));
        DeleteInfoGroup(handle, 0);
        EXPECT_EQ(ReasonOf([&] { IsMetaInfoItemAGroup(handle, item); }), "Unable to evaluate info item. Unknown error");
    }
}

TEST_F(InfoFileTest, TreesAreReadWithMissingRepeatedAndCircularLinks)
{
    const std::string begin = "[DataSet]\nVersion=2\nInfoSetCount=";
    EXPECT_EQ(TreeOf(begin + "3\nInfoSet0=A\nInfoSet2=A\n[DataSet\\A]\nx=1\n[DataSet\\]\ny=2\n"), "A{x=1;}{y=2;}");
    EXPECT_EQ(TreeOf(begin + "2\nInfoSet0=A\nInfoSet1=a\n[DataSet\\A]\nx=1\n"), "A{x=1;}a{}");
    EXPECT_EQ(TreeOf(begin + "1\nInfoSet0=A\n[DataSet\\A]\nx=1\nSubSectionCount=2\nsubsection1=C\nSubSection0=B\ny=2\n"
                             "[DataSet\\A\\B]\nSubSectionCount=-5\nSubSection0=none\n"),
              "A{B{SubSection0=none;}C{}x=1;y=2;}");
    EXPECT_EQ(TreeOf(begin + "-1\nInfoSet0=A\n"), "");
    EXPECT_EQ(TreeOf(begin + "1\n[DataSet\\]\nSubSectionCount=1\n"), "{{}}");
    EXPECT_EQ(TreeOf(begin + "65536\nInfoSet9=A\n"), "{}A{}");
    EXPECT_EQ(TreeOf(begin + "2\nInfoSet0=A\nInfoSet1=A\\B\n[DataSet\\A]\nSubSectionCount=1\nSubSection0=B\n"
                             "[DataSet\\A\\B]\nq=1\n"),
              "A{B{q=1;}}A\\B{}");
}

// Each of these would be thousands of millions of steps, and as many entries, if a count alone drove them.
TEST_F(InfoFileTest, CountsCostNoMoreThanTheKeysThatThereAre)
{
    const std::string slope = "GUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=";
    const std::string headers[] = {
        "InfoSetCount=3000\n" + Lines(3000, "InfoSet#=G#\n") + Lines(3000, "[DataSet\\G#]\nSubSectionCount=65536\n"),
        "[SetView]\nViewCount=65536\n" + Lines(65536, "View#=V\n") + "[V]\nParCount=65536\n" +
            Lines(65536, "Par#=0,#,value\n"),
        "[SetView]\nViewCount=65536\n" + Lines(65536, "View#=#\n") + Lines(65536, "[#]\nParCount=65536\n"),
        "[ProcessorSet]\nProcessorCount=65536\n" + Lines(65536, "Processor#=P\n") + "[P]\n" + slope +
            "0\n[ProcessorSet-Slope:0]\nDisplayName=My slope\nRangeMin=0 m\nInputCount=65536\nInput0Group=0\n"
            "Input0Channel=0\n",
        "[ProcessorSet]\nProcessorCount=4096\n" + Lines(4096, "Processor#=#\n") + Lines(4096, "[#]\n" + slope + "#\n") +
            Lines(4096, "[ProcessorSet-Slope:#]\nInputCount=65536\nOutputCount=65536\n"),
    };
    for (const std::string& header : headers)
        EXPECT_EQ(ReasonOfOpening(WriteOxd("[DataSet]\nVersion=2\n" + header)), "") << header.substr(0, 20);
    const std::string manyCopies = "[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=65536\n" +
                                   Lines(65536, "Processor#=P\n") + "[P]\n" + slope +
                                   "0\n[ProcessorSet-Slope:0]\nInputCount=65536\n" + Lines(65536, "Input#Group=0\n");
    EXPECT_TRUE(ReasonOfOpening(WriteOxd(manyCopies)).starts_with("The hed file is corrupted."));
}

} // namespace
