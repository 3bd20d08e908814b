// What a file tells of views and processors. Files are written without them, so that no other interface shows what was
// read.
#include "velflexlib/dataset/ProcessorSet.h"
#include "velflexlib/dataset/Processors.h"
#include "velflexlib/dataset/ViewSet.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltaris::velflexlib;
using namespace dataset;
using namespace veltaris::velstdlib::util;

namespace {

const std::string slopeGuid = "{AB0B4062-81AF-464B-A7F7-75B11891ACF8}";

class ViewProcessorTest : public ::testing::Test
{
protected:
    CVELConfig document;
    CViewSet viewSet;
    CProcessorSet processorSet;

    void Read(const std::string& header)
    {
        document.SetFileName("some.oxd");
        document.GetContent().Parse(header, false);
        viewSet.ReadFromFile(document, "SetView");
        processorSet.ReadFromFile(document);
    }

    // The first view, whose section has these lines.
    const CView& ReadView(const std::string& lines)
    {
        Read("[SetView]\nViewCount=1\nView0=v\n[V]\n" + lines);
        return *viewSet.GetViews().at(0);
    }

    // The first slope processor, whose parameter section has these lines.
    const CProcessorSlope& ReadSlope(const std::string& lines)
    {
        Read("[ProcessorSet]\nProcessorCount=1\nProcessor0=p\n[p]\nGUID=" + slopeGuid +
             "\nInstanceNo=3\n[processorset-slope:3]\n" + lines);
        return dynamic_cast<const CProcessorSlope&>(*processorSet.GetProcessors().at(0));
    }

    std::string SectionNames() const
    {
        std::string names;
        for (const CProcessorBase* processor : processorSet.GetProcessors())
            names += processor->GetSectionName() + " ";
        return names;
    }
};

std::string Fields(const CView& v)
{
    std::string text;
    for (const int field :
         {static_cast<int>(v.id), static_cast<int>(v.lineOp), v.channel, v.frame, v.size, static_cast<int>(v.viewMode),
          static_cast<int>(v.graphMode), v.aspectRatio, v.autoZRange ? 1 : 0, v.zRange.first, v.zRange.second})
        text += std::to_string(field) + " ";
    return text;
}

TEST_F(ViewProcessorTest, EveryKeyOfAViewSetsItsField)
{
    const std::pair<const char*, const char*> cases[] = {{"", "0 0 0 0 0 0 0 0 1 0 0 "},
                                                         {"ViewTyp=6\nLineOp=5\nChannel=-3\nFrame=4\nViewSize=3\n"
                                                          "ViewMode=1\nGraphMode=2\nAspectRatio=7\nAutoZRange=0\n"
                                                          "ZRange=-5, 8x,9\n",
                                                          "6 5 -3 4 3 1 2 7 0 -5 8 "},
                                                         {"AutoZRange=-2\n", "0 0 0 0 0 0 0 0 1 0 0 "},
                                                         {"ZRange=x,7\n", "0 0 0 0 0 0 0 0 1 0 7 "},
                                                         {"ZRange=7,x\n", "0 0 0 0 0 0 0 0 1 7 0 "},
                                                         {"ViewTyp=six\nChannel=\n", "0 0 0 0 0 0 0 0 1 0 0 "}};
    for (const auto& [lines, fields] : cases)
        EXPECT_EQ(Fields(ReadView(lines)), fields) << lines;
}

TEST_F(ViewProcessorTest, ParametersGoToTheListOfTheirOperator)
{
    const CView& view = ReadView("ParCount=12\nPar11=1,Twice,last\nPar0=1,Offset,3.5\nPar1=1,Offset\nPar2=6,a,b\n"
                                 "Par3=-1,a,b\nPar4= 5x,,v,dropped\nPar5=0,a,\nPar9=1,Twice,first\nPar010=1,No,1\n"
                                 "Par12=1,No,1\nPar8x=1,No,1\n");
    const CView::Parameters second{{"Offset", "3.5"}, {"Twice", "last"}};
    const decltype(view.lineOpParameters) expected{CView::Parameters{{"a", ""}}, second, {}, {}, {}, {{"", "v"}}};
    EXPECT_EQ(view.lineOpParameters, expected);

    Read("[SetView]\nViewWidth=640\nViewHeight=-480\nViewCount=2\nView0=v\nView1=V\n[v]\n");
    EXPECT_EQ(viewSet.GetWidth(), 640);
    EXPECT_EQ(viewSet.GetHeight(), -480);
    EXPECT_EQ(viewSet.GetViews().at(0), viewSet.GetViews().at(1)) << "one section makes one view";
}

TEST_F(ViewProcessorTest, EntriesWithIdentifierAndNumberBecomeProcessors)
{
    const std::string entries = "Processor0=s\nProcessor1=missing\nProcessor3=unnumbered\nProcessor4=nameless\n"
                                "Processor5=m\nProcessor6=none\nProcessor7=i\nProcessor8=S\nProcessor9=unlisted\n";
    const std::string sections =
        "[s]\nGUID=" + slopeGuid + "\nInstanceNo=0\n[unnumbered]\nGUID=unknown\n[nameless]\nInstanceNo=1\n" +
        "[m]\nGUID={1220F4A8-053A-494D-B28C-3635059D1530}\nInstanceNo=18446744073709551614\n" +
        "[none]\nGUID=unknown\nInstanceNo=18446744073709551615\n" +
        "[i]\nGUID={138707ED-FD93-4E28-B2B0-C5DA628CB815}\nInstanceNo=7\n[unlisted]\nGUID=unknown\nInstanceNo=1\n";
    Read("[ProcessorSet]\nProcessorCount=9\n" + entries + sections);
    EXPECT_EQ(SectionNames(), "ProcessorSet-Slope:0 ProcessorSet-MaxAdhesion:18446744073709551614 "
                              "ProcessorSet-Indentation:7 ProcessorSet-Slope:0 ");
    EXPECT_EQ(processorSet.GetProcessors()[1]->GetDisplayName(), "Maximum adhesion");
    EXPECT_EQ(processorSet.GetProcessors()[0], processorSet.GetProcessors()[3]) << "one kind and number";
    for (const char* header : {"", "[ProcessorSet]\n", "[ProcessorSet]\nProcessorCount=-1\nProcessor0=s\n"}) {
        Read(header + sections);
        EXPECT_EQ(SectionNames(), "") << header;
    }
}

TEST_F(ViewProcessorTest, KeysOfAProcessorAreReadAndItsRangeIsWritten)
{
    EXPECT_EQ(ReadSlope("").GetDisplayName(), "Slope");
    EXPECT_EQ(ReadSlope("").GetRangeMin(), (fx::CFxProperty{0, "m"}));
    for (const char* text : {"", "1", "True", "yes", "off", "00"})
        EXPECT_TRUE(ReadSlope("Enabled=" + std::string(text) + "\n").IsEnabled()) << text;
    for (const char* text : {"0", "FALSE", "No"})
        EXPECT_FALSE(ReadSlope("Enabled=" + std::string(text) + "\n").IsEnabled()) << text;
    EXPECT_EQ(ReadSlope("RangeMin=wide\n").GetRangeMin(), (fx::CFxProperty{0, "m"})) << "it is no property";
    EXPECT_EQ(ReadSlope("RangeMin=3k\n").GetRangeMin(), (fx::CFxProperty{3000, "m"}));
    const CProcessorSlope& slope = ReadSlope("RangeMin=-2.5 nm\nRangeMax=3\u00B5V#!\nDisplayName=My slope\n");
    EXPECT_EQ(slope.GetDisplayName(), "My slope");
    document.Clear();
    slope.SaveParameters(document);
    EXPECT_EQ(document.GetContent().Render(),
              "[ProcessorSet-Slope:3]\r\nRangeMin=-2.5e-09 m\r\nRangeMax=3e-06 V# !\r\n")
        << "what is written never breaks the header";
}

TEST_F(ViewProcessorTest, ChannelsAreNamedByGroupAndNumber)
{
    const CProcessorSlope& slope = ReadSlope("InputCount=5\nInput0Group=1\nInput0Channel=2\nInput1Group=1\n"
                                             "Input3Group=9\ninput3CHANNEL=9\nInput5Group=1\nInput5Channel=2\n"
                                             "Input04Group=1\nInput4Channels=2\nOutputCount=1\nOutput0Group=3\n"
                                             "Output0Channel=4\n");
    ASSERT_EQ(slope.GetInputs().GetCount(), 5U);
    const CChannelAddress addresses[] = {{1, 2}, {1, noIndex}, {}, {9, 9}, {}, {}};
    for (std::uint64_t i = 0; i < std::size(addresses); ++i)
        EXPECT_EQ(slope.GetInputs().GetAddress(i), addresses[i]) << i;
    EXPECT_EQ(slope.GetOutputs().GetAddress(0), (CChannelAddress{3, 4}));
}

} // namespace
