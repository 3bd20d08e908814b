// Letters beyond those of the best font. The tests need DejaVu Sans, and Droid Sans Fallback for East Asia.
#include "tool/ToolTest.h"

#include <regex>

class PosixFontTest : public ToolTest
{
protected:
    // The letters of a title, as outlines: of two alike there is one.
    static std::string Drawn(const std::string& title)
    {
        ResultsOf("export sample.oxd -g ForwardScan -c Phase --no-provenance --title " + title + " -o out.svg");
        return ReadBytes("out.svg");
    }
};

TEST_F(PosixFontTest, DrawsEachLetterInAFontThatHasIt)
{
    // What no font has is the same box each time.
    EXPECT_EQ(Drawn("\uE000x"), Drawn("\uE001x"));
    for (const auto& [one, other] :
         {std::pair("力", "高"), {"Höhe力", "Höhe高"}, {"高a", "高b"}, {"ピ力", "ゾ力"}, {"α", "β"}}) {
        EXPECT_NE(Drawn(one), Drawn(other)) << one;
        EXPECT_NE(Drawn(one), Drawn("\uE000")) << one;
    }
}

TEST_F(PosixFontTest, PutsLettersOfTwoFontsOneBehindTheOther)
{
    const std::string svg = Drawn("a力b");
    const std::regex letter("<use xlink:href=\"#glyph(\\d+)-\\d+\" x=\"([0-9.]+)\"");
    std::vector<std::string> fonts;
    std::vector<double> places;
    for (std::sregex_iterator i(svg.begin(), svg.end(), letter), end; i != end && fonts.size() < 3; ++i) {
        fonts.push_back((*i)[1]);
        places.push_back(std::stod((*i)[2]));
    }
    EXPECT_EQ(fonts, (std::vector<std::string>{"0", "1", "0"}));
    ASSERT_EQ(places.size(), 3);
    EXPECT_NEAR(places[1] - places[0], 8.6, 1);
    EXPECT_NEAR(places[2] - places[1], 14, 1); // as wide as high
}
