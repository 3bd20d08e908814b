// What is read from a file about views and processors. The C interface does not show them, and files are written
// without them, so these tests use the classes themselves.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/processors/ProcessorSet.h"
#include "velflexlib/dataset/processors/Processors.h"
#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velflexlib/dataset/views/ViewSet.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltaris::velflexlib;
using namespace dataset;
using namespace veltaris::velstdlib::util;

namespace {

const std::string slopeGuid = "{AB0B4062-81AF-464B-A7F7-75B11891ACF8}";
// Begins with one slope processor and ends with its parameter section.
const std::string slopeSections = "[ProcessorSet]\nProcessorCount=1\nProcessor0=p\n[p]\nGUID=" + slopeGuid +
                                  "\nInstanceNo=3\n[processorset-slope:3]\n";

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

    // Reads a header with one view, whose section has these lines.
    const CView& ReadView(const std::string& lines)
    {
        Read("[SetView]\nViewCount=1\nView0=v\n[V]\n" + lines);
        return *viewSet.GetViews().at(0);
    }

    // Reads a header with one slope processor, whose parameter section has these lines.
    const CProcessorSlope& ReadSlope(const std::string& lines)
    {
        Read(slopeSections + lines);
        return dynamic_cast<const CProcessorSlope&>(*processorSet.GetProcessors().at(0));
    }
};

TEST_F(ViewProcessorTest, EveryKeyOfAViewSetsItsField)
{
    const std::pair<const char*, const char*> cases[] = {
        {"ViewTyp=6\nLineOp=5\nChannel=-3\nFrame=4\nViewSize=3\nViewMode=1\nGraphMode=2\nAspectRatio=7\n"
         "AutoZRange=0\nZRange=-5, 8x,9\n",
         "6 5 -3 4 3 1 2 7 0 -5 8 "},
        {"ViewTyp=six\nChannel=\nAutoZRange=-2\nZRange=x,7\n", "0 0 0 0 0 0 0 0 1 0 7 "}};
    for (const auto& [lines, fields] : cases) {
        const CView& v = ReadView(lines);
        std::string text;
        for (const int field : {static_cast<int>(v.id), static_cast<int>(v.lineOp), v.channel, v.frame, v.size,
                                static_cast<int>(v.viewMode), static_cast<int>(v.graphMode), v.aspectRatio,
                                v.autoZRange ? 1 : 0, v.zRange.first, v.zRange.second})
            text += std::to_string(field) + " ";
        EXPECT_EQ(text, fields) << lines;
    }
}

TEST_F(ViewProcessorTest, ParametersOfAViewGoToTheListOfTheirOperator)
{
    const CView& view = ReadView(
        "ParCount=12\nPar11=1,Twice,last\nPar0=1,Offset,3.5\nPar1=1,Offset\nPar2=6,a,b\n"
        "Par3=-1,a,b\nPar4= 5x,,v,dropped\nPar5=0,a,\nPar9=1,Twice,first\nPar010=1,No,1\nPar12=1,No,1\nPar8x=1,No,1\n");
    const CView::Parameters second{{"Offset", "3.5"}, {"Twice", "last"}};
    const decltype(view.lineOpParameters) expected{CView::Parameters{{"a", ""}}, second, {}, {}, {}, {{"", "v"}}};
    EXPECT_EQ(view.lineOpParameters, expected);
}

TEST_F(ViewProcessorTest, OneSectionGivesOneView)
{
    Read("[SetView]\nViewWidth=640\nViewHeight=-480\nViewCount=3\nView0=v\nView1=V\n[v]\n");
    EXPECT_EQ(std::pair(viewSet.GetWidth(), viewSet.GetHeight()), std::pair(640, -480));
    ASSERT_EQ(viewSet.GetViews().size(), 3U);
    EXPECT_EQ(viewSet.GetViews()[0], viewSet.GetViews()[1]);
    EXPECT_NE(viewSet.GetViews()[0], viewSet.GetViews()[2]);
}

TEST_F(ViewProcessorTest, EntriesWithIdentifierAndNumberBecomeProcessors)
{
    const std::string sections =
        "[s]\nGUID=" + slopeGuid + "\nInstanceNo=0\n[unnumbered]\nGUID=unknown\n[nameless]\nInstanceNo=1\n" +
        "[m]\nGUID={1220F4A8-053A-494D-B28C-3635059D1530}\nInstanceNo=18446744073709551614\n" +
        "[i]\nGUID={138707ED-FD93-4E28-B2B0-C5DA628CB815}\nInstanceNo=7\n[unlisted]\nGUID=unknown\nInstanceNo=1\n";
    Read("[ProcessorSet]\nProcessorCount=8\nProcessor0=s\nProcessor1=missing\nProcessor3=unnumbered\n"
         "Processor4=nameless\nProcessor5=m\nProcessor6=i\nProcessor7=S\nProcessor8=unlisted\n" +
         sections);
    std::string names;
    for (const auto& processor : processorSet.GetProcessors())
        names += processor->GetSectionName() + " " + processor->GetDisplayName() + "; ";
    EXPECT_EQ(names, "ProcessorSet-Slope:0 Slope; ProcessorSet-MaxAdhesion:18446744073709551614 Maximum adhesion; "
                     "ProcessorSet-Indentation:7 Indentation; ProcessorSet-Slope:0 Slope; ");
    EXPECT_NE(processorSet.GetProcessors()[0], processorSet.GetProcessors()[3]) << "each entry makes one of its own";
    Read("[ProcessorSet]\nProcessorCount=-1\nProcessor0=s\n" + sections);
    EXPECT_TRUE(processorSet.GetProcessors().empty());
}

TEST_F(ViewProcessorTest, AProcessorIsEnabledUnlessItsKeySaysNo)
{
    for (const std::string text : {"", "00", "1", "True", "yes"})
        EXPECT_TRUE(ReadSlope("Enabled=" + text + "\n").IsEnabled()) << text;
    for (const std::string text : {"0", "FALSE", "no"})
        EXPECT_FALSE(ReadSlope("Enabled=" + text + "\n").IsEnabled()) << text;
}

TEST_F(ViewProcessorTest, KeysOfAProcessorAreItsNameRangeAndChannels)
{
    for (const auto& [text, range] : {std::pair("", fx::CFxProperty{0, "m"}), {"wide", {0, "m"}}, {"3k", {3000, "m"}}})
        EXPECT_EQ(ReadSlope("RangeMin=" + std::string(text) + "\n").GetRangeMin(), range) << text;
    const CProcessorSlope& slope =
        ReadSlope("RangeMin=-2.5 nm\nRangeMax=3 kV\nDisplayName=My slope\nInputCount=5\nInput0Group=1\n"
                  "Input0Channel=2\nInput1Group=1\nInput3Group=9\ninput3CHANNEL=9\nInput5Group=1\nInput5Channel=2\n"
                  "Input04Group=1\nInput4Channels=2\nOutputCount=1\nOutput0Group=3\nOutput0Channel=4\n");
    EXPECT_EQ(slope.GetDisplayName(), "My slope");
    EXPECT_EQ(slope.GetRangeMin(), (fx::CFxProperty{-2.5e-9, "m"}));
    EXPECT_EQ(slope.GetRangeMax(), (fx::CFxProperty{3000, "V"}));
    ASSERT_EQ(slope.GetInputs().GetCount(), 5U);
    const CChannelAddress addresses[] = {{1, 2}, {1, noIndex}, {}, {9, 9}, {}, {}};
    for (std::uint64_t i = 0; i < std::size(addresses); ++i)
        EXPECT_EQ(slope.GetInputs().GetAddress(i), addresses[i]) << i;
    EXPECT_EQ(slope.GetOutputs().GetAddress(0), (CChannelAddress{3, 4}));
}

TEST_F(ViewProcessorTest, ParametersOfForceCurvesAreReadAndWritten)
{
    const std::string entry = "[ProcessorSet]\nProcessorCount=1\nProcessor0=p\n[p]\nInstanceNo=1\n"
                              "GUID={138707ED-FD93-4E28-B2B0-C5DA628CB815}\n[ProcessorSet-Indentation:1]\n";
    Read(entry + "BaselineMin=10 nm\nBaselineMax=200nm\nSpringConstant=50 mN/m\nSensitivity=55\nContactLaw=1\n");
    processorSet.GetProcessors().at(0)->SaveParameters(document);
    const auto& keys = document.SelectSection("ProcessorSet-Indentation:1")->keys;
    std::string text;
    for (const char* const key : {"BaselineMin", "BaselineMax", "Threshold", "SpringConstant", "Sensitivity",
                                  "BaselineShare", "ContactLaw", "FitShare"})
        text += keys.GetValue(key) + "; ";
    EXPECT_EQ(text, "1e-08 m; 2e-07 m; 5; 0.05 N/m; 55 m/V; 0.4; 1; 0.5; ");
}

TEST_F(ViewProcessorTest, ProcessorsAreConnectedToTheChannelsThatWereLoaded)
{
    CDataSet dataSet;
    document.GetContent().Parse("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch1=A\n" + slopeSections +
                                    "InputCount=3\nInput0Group=0\nInput0Channel=1\nInput1Group=0\n"
                                    "Input2Group=9\nInput2Channel=0\nOutputCount=1\nOutput0Group=0\n"
                                    "Output0Channel=1\n",
                                false);
    CDataSetToVELConfig(dataSet).LoadHeader(document, "DataSet", false);
    const CProcessorBase& slope = *dataSet.GetProcessorSet().GetProcessors().at(0);
    for (const auto* const links : {&slope.GetInputs(), &slope.GetOutputs()}) {
        ASSERT_NE(links->GetBuffer(0), nullptr);
        EXPECT_EQ(links->GetBuffer(0), dataSet.GetGroup(0)->GetChannelBuffer(1));
    }
    for (const std::uint64_t unknown : {1U, 2U})
        EXPECT_EQ(slope.GetInputs().GetBuffer(unknown), nullptr);
    dataSet.GetGroup(0)->DeleteChannelBuffer(1);
    EXPECT_EQ(slope.GetInputs().GetBuffer(0), nullptr) << "a processor keeps no channel alive";
}

} // namespace
