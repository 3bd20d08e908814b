// What a file tells of views. Files are written without them, so that no other interface shows what was read.
#include "velflexlib/dataset/ViewSet.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltaris::velflexlib::dataset;
using namespace veltaris::velstdlib::util;

namespace {

class ViewSetTest : public ::testing::Test
{
protected:
    CVELConfig document;
    CViewSet viewSet;

    void Read(const std::string& header)
    {
        document.SetFileName("some.oxd");
        document.GetContent().Parse(header, false);
        viewSet.ReadFromFile(document, "SetView");
    }

    // The first view, whose section has these lines.
    const CView& ReadView(const std::string& lines)
    {
        Read("[SetView]\nViewCount=1\nView0=v\n[V]\n" + lines);
        return *viewSet.GetViews().at(0);
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

TEST_F(ViewSetTest, EveryKeyOfAViewSetsItsField)
{
    const std::pair<const char*, const char*> cases[] = {{"", "0 0 0 0 0 0 0 0 1 0 0 "},
                                                         {"ViewTyp=6\nLineOp=5\nChannel=-3\nFrame=4\nViewSize=3\n"
                                                          "ViewMode=1\nGraphMode=2\nAspectRatio=7\nAutoZRange=0\n"
                                                          "ZRange=-5, 8x,9\n",
                                                          "6 5 -3 4 3 1 2 7 0 -5 8 "},
                                                         {"AutoZRange=-2\n", "0 0 0 0 0 0 0 0 1 0 0 "},
                                                         {"ZRange=x,7\n", "0 0 0 0 0 0 0 0 1 0 7 "},
                                                         {"ViewTyp=six\nChannel=\n", "0 0 0 0 0 0 0 0 1 0 0 "}};
    for (const auto& [lines, fields] : cases)
        EXPECT_EQ(Fields(ReadView(lines)), fields) << lines;
}

TEST_F(ViewSetTest, ParametersGoToTheListOfTheirOperator)
{
    const CView& view = ReadView("ParCount=12\nPar11=1,Twice,last\nPar0=1,Offset,3.5\nPar1=1,Offset\nPar2=6,a,b\n"
                                 "Par3=-1,a,b\nPar4= 5x,,v,dropped\nPar5=0,a,\nPar9=1,Twice,first\nPar010=1,No,1\n"
                                 "Par12=1,No,1\nPar8x=1,No,1\n");
    const CView::Parameters second{{"Offset", "3.5"}, {"Twice", "last"}};
    const decltype(view.lineOpParameters) expected{CView::Parameters{{"a", ""}}, second, {}, {}, {}, {{"", "v"}}};
    EXPECT_EQ(view.lineOpParameters, expected);
}

// Each of these would be four thousand million steps, and as many entries, if a count alone drove them.
TEST_F(ViewSetTest, CountsCostNoMoreThanTheKeysThatThereAre)
{
    std::string views = "[SetView]\nViewWidth=640\nViewHeight=-480\nViewCount=65536\n";
    std::string sections = "[same]\nParCount=65536\n";
    for (int i = 0; i < 65536; ++i) {
        views += "View" + std::to_string(i) + "=" + (i % 2 == 0 ? "same" : std::to_string(i)) + "\n";
        sections += "Par" + std::to_string(i) + "=0," + std::to_string(i) + ",value\n";
    }
    for (int i = 1; i < 65536; i += 2)
        sections += "[" + std::to_string(i) + "]\nParCount=65536\n";
    Read(views + sections);
    EXPECT_EQ(viewSet.GetWidth(), 640);
    EXPECT_EQ(viewSet.GetHeight(), -480);
    EXPECT_EQ(viewSet.GetViews().back()->lineOpParameters[0].size(), 0U);
    EXPECT_EQ(viewSet.GetViews().front()->lineOpParameters[0].size(), 65536U);
    EXPECT_EQ(viewSet.GetViews().front(), viewSet.GetViews().at(65534)) << "one section makes one view";
}

} // namespace
