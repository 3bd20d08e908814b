// Which findings a file has, where they are, and which samples are called certain.
#include "inspect/Inspection.h"
#include "support/Lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ios>
#include <istream>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

using namespace veltaris::inspect;

namespace {

// Headers of two groups of two channels, which `all` has in full: 2 lines of 3 points in 16 bits each.
const std::string channel = "Version=2\nPoints=3\nLines=2\nDim0Range=1\nDim1Range=1\nDim2Range=1\nSaveBits=16\n"
                            "Dim0Min=0\nDim1Min=0\nDim2Min=0\n";
const std::string groups = "[DataSet]\nVersion=2\nGroupCount=2\nGr0-Count=2\nGr1-Count=2\nGr0-Ch0=DataSet-0:0\n"
                           "Gr0-Ch1=DataSet-0:1\nGr1-Ch0=DataSet-1:0\nGr1-Ch1=DataSet-1:1\n";
const std::string first = "[DataSet-0:0]\n" + channel;
const std::string rest = "[DataSet-0:1]\n" + channel + "[DataSet-1:0]\n" + channel + "[DataSet-1:1]\n" + channel;
const std::string all = groups + first + rest;
constexpr std::size_t bytesOfAll = 48;

const std::string one = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=C\n";
const std::string oneChannel = one + "[C]\n" + channel;
constexpr std::size_t bytesOfOne = 12;

std::string File(std::string_view header, std::size_t sampleBytes)
{
    return WithCrLf(header).append("\r\n#!").append(sampleBytes, '\0');
}

Inspection InspectBytes(const std::string& bytes)
{
    std::istringstream stream(bytes);
    return InspectStream(stream, "file.oxd");
}

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    return text.replace(text.find(from), from.size(), to);
}

std::string Listed(const Inspection& inspection)
{
    std::string text;
    for (const Finding& finding : inspection.findings)
        text.append(finding.rule->id)
            .append(" line ")
            .append(std::to_string(finding.line))
            .append(" ")
            .append(finding.sentence)
            .append("\n");
    return text;
}

struct Case
{
    std::string_view id;
    std::uint64_t line; // 0: none
    std::string file;
};

std::vector<Case> Cases()
{
    const auto with = [](const std::string& lines) { return File(oneChannel + lines, bytesOfOne); };
    const auto changed = [](std::string_view from, std::string_view to) {
        return File(Replaced(oneChannel, from, to), bytesOfOne);
    };
    const auto viewed = [](const std::string& lines) {
        return File(oneChannel + "[SetView]\nViewCount=1\nView0=V\n[V]\n" + lines, bytesOfOne);
    };
    const auto processed = [](const std::string& lines) {
        return File(oneChannel + "[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n" + lines, bytesOfOne);
    };
    const auto informed = [](const std::string& keys, const std::string& sections) {
        return File(Replaced(oneChannel, "[C]\n", keys + "[C]\n") + sections, bytesOfOne);
    };
    const auto versioned = [](const std::string& version, const std::string& lines) {
        return File(Replaced(oneChannel, "[C]\nVersion=2", "[C]\n" + version) + lines, bytesOfOne);
    };
    const std::string axisOfLine = "LineDim0Range=2\nLineDim0Min=0\nLineDim0Points=3\n";
    return {
        {"OXD101", 0, ""},
        {"OXD101", 0, "[DataSet]\r\nVersion=2\r\n"},
        {"OXD101", 0, "#!abc"},
        {"OXD103", 0, "\xFF\xFE[DataSet]\n#!"},
        {"OXD104", 0, with("Frame=\xB5m\n")},
        {"OXD105", 1, "Points=3\r\n" + with({})},
        {"OXD106", 17, with("Points 4\n")},
        {"OXD107", 17, with("[]\n")},
        {"OXD108", 17, with("[c]\n")},
        {"OXD109", 17, with("POINTS=3\n")},
        {"OXD110", 17, with("Frame=\n")},
        {"OXD111", 17, Replaced(with("Frame=x"), "Frame=x\r\n", "Frame=x")},
        {"OXD111", 1, "Version=2#!"},
        {"OXD112", 0, "\xEF\xBB\xBF" + with({})},
        {"OXD113", 17, with("Dim1Range=2\n")},
        {"OXD113", 18, with("Dim2Name=A\nDim2Name=B\n")},
        {"OXD114", 0, with("Dim2Unit=\xC2\xB0\nDim1Unit=\xC2\xB5m\nFrame=\xFF\n")},
        {"OXD201", 2, changed("Version=2", "Version=3")},
        {"OXD201", 7, changed("[C]\nVersion=2", "[C]\nVersion=4")},
        {"OXD201", 18, with("[SetView]\nVersion=2\n")},
        {"OXD202", 8, changed("Points=3", "Points=-3")},
        {"OXD202", 3, changed("GroupCount=1", "GroupCount=70000")},
        {"OXD202", 1, File("[DataSet]\nChannelCount=1\n", 0)},
        {"OXD203", 21, viewed("ViewMode=2\n")},
        {"OXD203", 21, viewed("ZRange=5\n")},
        {"OXD203", 22, viewed("ParCount=1\nPar0=x,y,z\n")},
        {"OXD203", 21, processed("[P]\nGUID={}\nInstanceNo=1\n")},
        {"OXD203", 25,
         with("[ProcessorSet]\nProcessorCount=2\nProcessor0=P\nProcessor1=Q\n[P]\n"
              "GUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=1\n[Q]\nGUID={}\nInstanceNo=1\n")},
        {"OXD204", 17, with("CurLine=l2\n")},
        {"OXD204", 21, processed("[ProcessorSet-Slope:1]\nEnabled=on\n")},
        {"OXD205", 8, changed("Points=3", "Points=3S")},
        {"OXD205", 3, changed("GroupCount=1", "GroupCount=l")},
        {"OXD206", 17, with("CurLine=2147483648\n")},
        {"OXD207", 18, with("[SetView]\nViewCount=-1\n")},
        {"OXD208", 21, viewed("ZRange=1mV,5\n")},
        {"OXD208", 10, changed("Dim0Range=1", "Dim0Range=1e-400")},
        {"OXD209", 12, changed("Dim2Range=1", "Dim2Range=1,5")},
        {"OXD210", 17, with("SaveOrder=Motorola\n")},
        {"OXD211", 6, changed("Dim2Range=1", "Dim2Rxnge=1")},
        {"OXD211", 16, changed("Dim2Min=0", "Dim2Min=")},
        {"OXD211", 17, with("Dim2Unit=\n")},
        {"OXD211", 6, versioned("Version=3", axisOfLine + "LineDim1Range=2\nLineDim1Points=3\n")},
        {"OXD212", 17, with("Dim2Unyt=V\n")},
        {"OXD212", 17, with("Dim2UnitV\n")},
        {"OXD212", 17, with("im2Unit=V\n")},
        {"OXD212", 17, with("Dim2U\x96it=V\n")},
        {"OXD212", 17, with("Dim2U\nit=V\n")},
        {"OXD212", 17, with("Dim2Name=A\rDim2Unit=V\n")},
        {"OXD212", 17, with("Dim2Unit=m\nV\n")},
        {"OXD212", 16, changed("Dim2Min=0", "Dim2Min=-0\n5")},
        {"OXD212", 10,
         File(Replaced(Replaced(oneChannel, "[C]\nVersion=2", "[C]\nVersion=1"), "Dim0Range", "Dm0Range"), 12)},
        {"OXD213", 7, versioned("Version=1", "Dim2Unit=Pa\n")},
        {"OXD213", 6, versioned("Vorsion=2", "Dim2Unit=Pa\n")},
        {"OXD301", 4, changed("Gr0-Count=1", "Gr0-Count=9")},
        {"OXD301", 3, changed("GroupCount=1", "GroupCount=2")},
        {"OXD302", 6, informed("Gr1-Name=x\n", {})},
        {"OXD302", 6, informed("Gr0-Ch1=C\n", {})},
        {"OXD303", 5, changed("Gr0-Ch0=C", "Gr0-Ch0=D")},
        {"OXD304", 7, File(Replaced(all, "DataSet-0:1", "DataSet-0:0"), bytesOfAll)},
        {"OXD305", 7, informed("InfoSetCount=1\nInfoSet0=I\n", {})},
        {"OXD305", 6, informed("SetInfos=I\n", {})},
        {"OXD306", 19, with("[SetView]\nViewCount=1\nView0=V\n")},
        {"OXD306", 19, processed("[P]\nInstanceNo=1\n")},
        {"OXD307", 17, with("[D]\nPoints=3\nSaveBits=16\n")},
        {"OXD308", 7, File(Replaced(Replaced(all, "Gr0-Ch1", "Gr1-Ch2"), "Gr1-Count=2", "Gr1-Count=3"), bytesOfAll)},
        {"OXD309", 17, with("[DataSet\\I]\n")},
        {"OXD310", 1, changed("[DataSet]", "[DbtaSet]")},
        {"OXD310", 0, "a text of another kind\n#!"},
        {"OXD401", 13, changed("SaveBits=16", "SaveBits=12")},
        {"OXD402", 0, File(oneChannel, bytesOfOne - 1)},
        {"OXD404", 0, File(Replaced(oneChannel, "Points=3", "Points=3S"), bytesOfOne)},
        {"OXD405", 0, File(oneChannel, bytesOfOne + 1)},
        {"OXD406", 8, File(oneChannel, bytesOfOne + 4)},
        {"OXD406", 17, File(oneChannel + "Lines=1\n", bytesOfOne)},
        {"OXD406", 6, File(Replaced(oneChannel, "Points=3", "Poimts=3"), bytesOfOne)},
        {"OXD406", 7, File(oneChannel + "LineDim1Points=0\n", bytesOfOne - 6)},
        {"OXD406", 8, File(Replaced(oneChannel, "Points=3", "Points=3\n0"), 10 * bytesOfOne)},
        {"OXD407", 17, versioned("Version=3", "LineDim0Points=4\n")},
        {"OXD408", 17, with("CurLine=2\n")},
        {"OXD409", 6, versioned("Version=3", axisOfLine + "LineDim1Range=2\nLineDim1Min=0\nLineDim1Pxints=2\n")},
        {"OXD410", 7, versioned("Version=2", axisOfLine)},
        {"OXD501", 12,
         File(Replaced(Replaced(oneChannel, "Dim2Range=1", "Dim2Range=1.7e308"), "Dim2Min=0", "Dim2Min=1.7e308"),
              bytesOfOne)},
        {"OXD501", 12, changed("Dim2Range=1", "Dim2Range=inf")},
        {"OXD502", 12, changed("Dim2Range=1", "Dim2Range=0")},
        {"OXD503", 11, changed("Dim1Range=1", "Dim1Range=0")},
        {"OXD504", 10, changed("Dim0Range=1", "Dim0Range=-1")},
        {"OXD601", 20, viewed({})},
        {"OXD602", 20, processed("[P]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=1\n")},
        {"OXD603", 17, with("[Calibration]\n")},
        {"OXD604", 17, with("Operator=Jane\n")},
        {"OXD605", 21, informed("SetInfos=I\n", "[I]\n-- S --=--------\noffsetx=1\nX-Pos=2\n")},
        {"OXD606", 17, with(std::string("Frame=a\0b\n", 10))},
        {"OXD607", 10, changed("Dim0Range=1", "Dim0Range=1.2345678")},
        {"OXD608", 13, File(Replaced(oneChannel, "SaveBits=16", "SaveBits=8"), 6)},
        {"OXD609", 1, File("[DataSet]\nChannelCount=1\nFrameCount=1\nCh0-Fr0=C\n[C]\n" + channel, bytesOfOne)},
        {"OXD610", 18, informed("SetInfos=I\n", "[I]\n-- S --=--------\noffsetx=1\nX-Pos=2\n")},
    };
}

// The offset at which a line begins.
std::size_t OffsetOf(const std::string& bytes, std::uint64_t line)
{
    std::size_t offset = 0;
    for (std::uint64_t i = 1; i < line; ++i)
        offset = bytes.find('\n', offset) + 1;
    return offset;
}

// The last ones are legal, although no file is written like them.
TEST(InspectionTest, WholeFilesHaveNoFindings)
{
    for (const auto& [header, bytes] : {std::pair(all, bytesOfAll),
                                        {oneChannel, bytesOfOne},
                                        {oneChannel + "Dim1Unit=m\n", bytesOfOne},
                                        {Replaced(oneChannel, "[C]\nVersion=2", "[C]\nVersion=3"), bytesOfOne},
                                        {Replaced(oneChannel, "[C]\nVersion=2", "[C]\nVersion=1"), bytesOfOne}}) {
        const Inspection inspection = InspectBytes(File(header, bytes));
        EXPECT_EQ(Listed(inspection), "");
        EXPECT_EQ(inspection.claimedBytes, bytes);
        EXPECT_EQ(inspection.channels.size(), bytes / bytesOfOne);
        EXPECT_EQ(inspection.channels.back().offset, inspection.fileBytes - bytesOfOne);
    }
    const std::string frames =
        "[DataSet]\nChannelCount=1\nFrameCount=2\nCh0-Fr0=C\nCh0-Fr1=D\n[C]\n" + channel + "[D]\n";
    const Inspection old = InspectBytes(File(frames + channel, 2 * bytesOfOne));
    EXPECT_TRUE(old.findings.size() == 1 && old.findings[0].rule->id == std::string_view("OXD609")) << Listed(old);
}

TEST(InspectionTest, EachRuleIsFoundAtItsLine)
{
    std::set<std::string_view> found{"OXD102", "OXD403"}; // which take a file of more than 1 GiB
    for (const Case& c : Cases()) {
        const Inspection inspection = InspectBytes(c.file);
        const auto isIt = [&](const Finding& f) { return f.rule->id == c.id && f.line == c.line; };
        const auto finding = std::ranges::find_if(inspection.findings, isIt);
        ASSERT_NE(finding, inspection.findings.end()) << c.id << " in line " << c.line << " of\n"
                                                      << c.file << "\nbut:\n"
                                                      << Listed(inspection);
        const bool isAtLine = c.line == 0 || finding->offset == OffsetOf(c.file, c.line);
        EXPECT_TRUE(isAtLine) << c.id << " at byte " << finding->offset;
        EXPECT_FALSE(finding->sentence.empty());
        found.insert(c.id);
    }
    for (const Rule& rule : AllRules())
        EXPECT_TRUE(found.contains(rule.id)) << rule.id;
}

TEST(InspectionTest, SentencesTellWhatIsUsedInstead)
{
    const std::pair<std::string, std::string_view> cases[] = {
        {Replaced(oneChannel, "Points=3", "Points=3S"), R"(is "3S", which is not a number; 0 is used instead.)"},
        {Replaced(oneChannel, "Dim0Range=1", "Dim0Range=l"), R"(is "l", which is not a number; 0 is used instead.)"},
        {Replaced(Replaced(oneChannel, "[C]\nVersion=2", "[C]\nVersion=1"), "Dim0Range=1", "Dim0Range=l"),
         R"(is "l", which is not a number; 1 is used instead.)"},
        {"[DataSet]\nChannelCount=1\n", R"("FrameCount" in section "DataSet" is missing)"},
        {Replaced(oneChannel, "GroupCount=1", "GroupCount=70000"), "more than the rest of the file can back up."},
        {Replaced(oneChannel, "Points=3", "Points=-3"), R"(is "-3", which no file can have.)"},
        {Replaced(oneChannel, "[DataSet]", "[DbtaSet]"), R"(no section "DataSet"; its first one is "DbtaSet".)"},
    };
    for (const auto& [header, sentence] : cases) {
        const std::string listed = Listed(InspectBytes(File(header, bytesOfOne)));
        EXPECT_NE(listed.find(sentence), std::string::npos) << sentence << "\nbut:\n" << listed;
    }
}

TEST(InspectionTest, RulesAreFoundByIdInAnyCase)
{
    EXPECT_EQ(FindRule("oxd205"), &GetRule(RuleId::SizeNoNumber));
    EXPECT_EQ(FindRule("OXD999"), nullptr);
    for (const Rule& rule : AllRules())
        EXPECT_EQ("OXD" + std::to_string(static_cast<int>(rule.number)), rule.id);
}

// Which of the four channels are certain, as a digit each.
std::string Certain(const std::string& header, std::size_t sampleBytes)
{
    std::string certain;
    for (const ChannelSamples& c : InspectBytes(File(header, sampleBytes)).channels)
        certain += c.isCertain ? '1' : (c.isDoubtedForOneDigit ? '?' : '0');
    return certain;
}

TEST(InspectionTest, ADamagedSizeMakesItsAndAllLaterChannelsUncertain)
{
    const auto second = [](std::string_view from, std::string_view to) {
        return groups + first + Replaced(rest, from, to);
    };
    EXPECT_EQ(Certain(all, bytesOfAll), "1111");
    EXPECT_EQ(Certain(all, bytesOfAll - 7), "1111") << "cut off";
    EXPECT_EQ(Certain(all, bytesOfAll + 7), "1111") << "with something behind";
    EXPECT_EQ(Certain(second("Points=3", "Points=S"), bytesOfAll), "1000");
    EXPECT_EQ(Certain(second("Lines=2", "Linus=2"), bytesOfAll), "1000");
    EXPECT_EQ(Certain(second("Lines=2", "Lines=2\nLines=1"), bytesOfAll), "1000");
    EXPECT_EQ(Certain(second("Lines=2", "Lines=1\nLines=2"), bytesOfAll), "1111") << "the bytes fit";
    EXPECT_EQ(Certain(second("Points=3", "Points=1"), bytesOfAll), "????");
    EXPECT_EQ(Certain(second("[DataSet-0:1]", "[DataSet-0:7]"), bytesOfAll), "0000");
    EXPECT_EQ(Certain(Replaced(all, "Gr1-Count=2", "Gr1-Count=1"), bytesOfAll), "000");
    EXPECT_EQ(Certain(Replaced(all, "Gr0-Ch1=DataSet-0:1\n", ""), bytesOfAll - 12), "111") << "no sample is left over";
    EXPECT_EQ(Certain(second("Points=3", "Points=3\n0"), bytesOfAll + 108), "1000") << "a line feed in 300";
    EXPECT_EQ(Certain(all + "[I]\nPoints=3\nLines=2\n", bytesOfAll + 7), "1111") << "information";
    const std::string frames = "[DataSet]\nChannelCount=1\nFrameCount=2\nCh0-Fr0=A\nCh0-Fr1=B\n";
    const std::string both = frames + "[A]\n" + channel + "[B]\n" + channel;
    EXPECT_EQ(Certain(both, 2 * bytesOfOne), "11");
    EXPECT_EQ(Certain(Replaced(both, "SaveBits", "SaveBots"), 2 * bytesOfOne), "00");
    EXPECT_EQ(Certain(Replaced(both, "SaveBits=16\n", ""), bytesOfOne / 2 + bytesOfOne), "11") << "8 bits, as missing";
}

TEST(InspectionTest, LinesThatAreThereAreCounted)
{
    for (const auto& [cut, lines] : {std::pair(0U, 2U), {1U, 1U}, {6U, 1U}, {7U, 0U}, {13U, 0U}}) {
        const Inspection inspection = InspectBytes(File(all, bytesOfAll - cut));
        EXPECT_EQ(inspection.channels.back().linesThere, lines) << cut;
        EXPECT_EQ(inspection.channels[2].linesThere, cut > 12 ? 1U : 2U) << cut;
    }
}

TEST(InspectionTest, ManyFindingsOfARuleAreCapped)
{
    const Inspection inspection = InspectBytes(File(oneChannel + Lines(5000, "[x#]\n"), bytesOfOne));
    ASSERT_EQ(inspection.findings.size(), 1001U);
    EXPECT_EQ(inspection.findings.back().sentence, "4000 more of this kind are not listed.");
}

TEST(InspectionTest, LongTextsAreCutBetweenCharacters)
{
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += "\xC2\xB5";
    const Inspection inspection = InspectBytes(File(oneChannel + "Unknown=" + text + "\n", bytesOfOne));
    ASSERT_EQ(inspection.findings.size(), 1U);
    EXPECT_EQ(inspection.findings.front().found, text.substr(0, 400));
}

// Reads bytes of which some can be had, and then fails, as a disk does or for lack of memory.
template <class Failure>
class CFailingBuffer : public std::stringbuf
{
public:
    CFailingBuffer(const std::string& bytes, int readsThatSucceed, const Failure& failure)
        : std::stringbuf(bytes), m_readsThatSucceed(readsThatSucceed), m_failure(failure)
    {
    }

private:
    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        if (m_readsThatSucceed-- <= 0)
            throw m_failure;
        return std::stringbuf::xsgetn(to, count);
    }

    int m_readsThatSucceed;
    Failure m_failure;
};

// The reads that a file needs to be inspected, of which each must fail as given while others succeed.
template <class Expected>
int ReadsThatFail(const auto& failure)
{
    for (int reads = 0;; ++reads) {
        CFailingBuffer buffer(File(all, bytesOfAll), reads, failure);
        std::istream stream(&buffer);
        try {
            InspectStream(stream, "file.oxd");
            return reads;
        } catch (const Expected&) {
        }
    }
}

TEST(InspectionTest, WhatKeepsAFileFromBeingReadIsThrownWhereverThatShows)
{
    EXPECT_GE(ReadsThatFail<std::system_error>(std::ios_base::failure("")), 2);
    EXPECT_GE(ReadsThatFail<std::bad_alloc>(std::bad_alloc()), 2);
}

TEST(InspectionTest, WhatIsNoFileThrows)
{
    EXPECT_THROW(Inspect("there-is-no-such-file.oxd"), std::system_error);
    EXPECT_THROW(Inspect("."), std::system_error);
}

} // namespace
