// The difference of two texts leads from the one to the other, by as few lines as can be.
#include "oxd/textdiff/LineDifference.h"
#include "oxd/textdiff/ShortestEdit.h"
#include "oxd/textdiff/UnifiedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

using oxd::LineNumbers;

// By the table of the longest common rows of all beginnings.
std::size_t FewestChanges(const LineNumbers& a, const LineNumbers& b)
{
    std::vector<std::vector<std::size_t>> common(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 1; i <= a.size(); ++i)
        for (std::size_t j = 1; j <= b.size(); ++j)
            common[i][j] =
                a[i - 1] == b[j - 1] ? common[i - 1][j - 1] + 1 : std::max(common[i - 1][j], common[i][j - 1]);
    return a.size() + b.size() - 2 * common[a.size()][b.size()];
}

template <class Line>
std::vector<Line> Unmarked(const std::vector<Line>& lines, const std::vector<bool>& marks)
{
    std::vector<Line> left;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (!marks[i])
            left.push_back(lines[i]);
    return left;
}

LineNumbers RandomLines(std::mt19937& random, std::size_t count, std::uint32_t kinds)
{
    LineNumbers lines(count);
    std::generate(lines.begin(), lines.end(), [&] { return static_cast<std::uint32_t>(random() % kinds); });
    return lines;
}

} // namespace

TEST(TextDifferenceTest, MarksTheFewestLinesThatLeaveTheSame)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto kinds = static_cast<std::uint32_t>(1 + random() % 5);
        const LineNumbers a = RandomLines(random, random() % 14, kinds), b = RandomLines(random, random() % 14, kinds);
        oxd::LineMarks difference{std::vector<bool>(a.size()), std::vector<bool>(b.size())};
        oxd::ShortestEdit(a, b, difference).Mark({0, a.size(), 0, b.size()});
        ASSERT_EQ(Unmarked(a, difference.removed), Unmarked(b, difference.added)) << i;
        const auto marked = std::ranges::count(difference.removed, true) + std::ranges::count(difference.added, true);
        ASSERT_EQ(marked, FewestChanges(a, b)) << i;
    }
}

// Of so many lines that have nothing to hold on to, the shortest edit would take hours.
TEST(TextDifferenceTest, EndsAlsoForTextsThatHaveLittleInCommon)
{
    std::mt19937 random(2);
    std::vector<std::string> texts(2 * 400'000);
    std::generate(texts.begin(), texts.end(), [&] { return std::to_string(random() % 1000); });
    const oxd::Lines a(texts.begin(), texts.begin() + 400'000), b(texts.begin() + 400'000, texts.end());
    const oxd::LineMarks difference = oxd::CompareLines(a, b);
    EXPECT_EQ(Unmarked(a, difference.removed), Unmarked(b, difference.added));
}

TEST(TextDifferenceTest, IsWrittenAsUnifiedText)
{
    const auto difference = [](const char* a, const char* b) { return oxd::UnifiedDifference({"a", a}, {"b", b}); };
    const std::string names = "--- a\n+++ b\n";
    EXPECT_EQ(difference("1\n2\n", "1\r\n2"), "");
    EXPECT_EQ(difference("", ""), "");
    EXPECT_EQ(difference("", "1\n2\n"), names + "@@ -0,0 +1,2 @@\n+1\n+2\n");
    EXPECT_EQ(difference("1\n", ""), names + "@@ -1 +0,0 @@\n-1\n");
    EXPECT_EQ(difference("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nx\n6\n7\n8\n9\n"),
              names + "@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+x\n 6\n 7\n 8\n");
    EXPECT_EQ(difference("a\n1\n2\n3\n4\n5\n6\nb\n", "1\n2\n3\n4\n5\n6\n"),
              names + "@@ -1,8 +1,6 @@\n-a\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n");
    EXPECT_EQ(difference("a\n1\n2\n3\n4\n5\n6\n7\nb\n", "1\n2\n3\n4\n5\n6\n7\n"),
              names + "@@ -1,4 +1,3 @@\n-a\n 1\n 2\n 3\n@@ -6,4 +5,3 @@\n 5\n 6\n 7\n-b\n");
}
