// The header store where no file can take it: orders, limits, aborting.
#include "api/FileTransfer.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/VELConfig.h"

#include <boost/log/attributes/constant.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/utility/setup/console.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace veltaris::velstdlib::util;

namespace {

std::string Rendered(const CVELKeyToValueList& list)
{
    std::string text;
    list.ForEach([&](auto key, auto value) { text.append(key).append("=").append(value).append(";"); });
    return text;
}

TEST(HeaderStoreTest, AKeySetAgainMovesToTheEndInItsNewSpelling)
{
    CTextStore texts;
    CVELKeyToValueList list(texts);
    list.SetValue("Lines", "1");
    list.SetValue("Points", std::uint64_t{2});
    list.SetValue("More", "xyz");
    for (int i = 0; i < 9; ++i) // more than is kept of what was replaced
        list.SetValue(i % 2 == 0 ? "lines" : "LINES", std::to_string(i));
    list.SetValue("POINTS", "");
    list.RemoveKey("missing");
    EXPECT_EQ(Rendered(list), "More=xyz;lines=8;");
    EXPECT_EQ(list.GetValueT<int>("LINES", 0), 8);
    EXPECT_EQ(list.GetValue("Points", "default"), "default");
    EXPECT_EQ(list.GetCount(), 2U);
    EXPECT_EQ(list.GetTextBytes(), 4 + 3 + 5 + 1U);
}

TEST(HeaderStoreTest, TheOrderOfKeysRunsOutInsteadOfWrappingAround)
{
    CTextStore texts;
    CVELKeyToValueList last(texts, std::numeric_limits<std::uint64_t>::max() - 1);
    last.SetValue("a", "1");
    EXPECT_THROW(last.SetValue("b", "2"), std::runtime_error);
    EXPECT_EQ(Rendered(last), "a=1;");
}

TEST(HeaderStoreTest, OnlyLettersHaveACapitalForm)
{
    CIniFileContent content;
    content.SelectCreateSection("@AMZ[");
    EXPECT_TRUE(content.SelectSection("@amz["));
    EXPECT_FALSE(content.SelectSection("`AMZ["));
    EXPECT_FALSE(content.SelectSection("@AMZ{"));
}

TEST(HeaderStoreTest, NoSectionIsActiveOnceAllAreCleared)
{
    CIniFileContent content;
    content.SelectCreateSection("A");
    content.GetActiveSection().SetValue("key", "value");
    content.Clear();
    EXPECT_THROW(content.GetActiveSection(), std::runtime_error);
    EXPECT_EQ(content.Render(), "");
}

TEST(HeaderStoreTest, ANumberThatIsNoneGivesTheDefaultAndAWarning)
{
    std::stringstream log;
    const auto sink = boost::log::add_console_log(log);
    boost::log::core::get()->add_global_attribute("Test", boost::log::attributes::make_constant(true));
    CTextStore texts;
    CVELKeyToValueList list(texts);
    list.SetValue("Points", "2S6");
    EXPECT_EQ(list.GetValueT<int>("Points", 7), 7);
    boost::log::core::get()->set_global_attributes({});
    boost::log::core::get()->remove_sink(sink);
    EXPECT_NE(log.str(), "");
}

TEST(HeaderStoreTest, AnEmptyKeyIsAKeyLikeAnyOtherAndNoneThatWasRemoved)
{
    for (const int keyCount : {2, 100}) { // searched through, and indexed
        CTextStore texts;
        CVELKeyToValueList list(texts);
        list.SetValue("", "empty");
        for (int i = 0; i < keyCount; ++i)
            list.SetValue(std::to_string(i), "v");
        EXPECT_EQ(list.GetValue(""), "empty") << keyCount;
        list.SetValue("", "again");
        EXPECT_EQ(list.GetCount(), keyCount + 1U);
        EXPECT_EQ(list.GetValue("0") + list.GetValue(""), "vagain");
        list.GetValue("0");
        list.RemoveKey("1"); // which would be asked for next
        list.RemoveKey("");
        EXPECT_EQ(list.GetValue("", "none"), "none") << keyCount;
        EXPECT_EQ(list.GetCount(), keyCount - 1U);
    }
}

TEST(HeaderStoreTest, AKeyIsNotTakenForTheOneThatIsExpected)
{
    CTextStore texts;
    CVELKeyToValueList before(texts);
    before.SetValue("", "empty");
    CVELKeyToValueList list(texts);
    list.ExpectKeysOf(before);
    list.SetLine("=value");
    list.SetLine("key");
    EXPECT_EQ(list.GetCount(), 0U);

    CVELKeyToValueList shorter(texts);
    CVELKeyToValueList likely(texts);
    shorter.SetValue("Key", "1");
    likely.ExpectKeysOf(shorter);
    likely.SetValue("Key1", "2"); // begins like the key that is expected
    EXPECT_EQ(Rendered(likely), "Key1=2;");
}

// Beside a document whose sections and keys are searched for one by one.
TEST(HeaderStoreTest, SectionsThatAreAlikeOrNearlySoHoldTheirOwnKeys)
{
    const auto isNamed = [](const std::string& name) {
        return [=](const auto& pair) { return veltaris::velstdlib::string::EqualFolded(pair.first, name); };
    };
    std::minstd_rand random;
    const auto below = [&](std::size_t count) { return random() % count; };
    for (const std::size_t keyCount : {3U, 20U, 80U}) {
        std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>> sections;
        std::string text;
        for (int i = 0; i < 60; ++i) {
            const std::string name = (below(4) == 0 ? "section" : "Section") + std::to_string(below(40));
            text += "[" + name + "]\n";
            auto section = std::ranges::find_if(sections, isNamed(name));
            if (section == sections.end())
                section = sections.insert(section, {name, {}});
            for (std::size_t index = 0; index < keyCount; ++index) {
                const bool isOdd = below(30) == 0;
                const std::string key =
                    (below(40) == 0 ? "KEY" : "Key") + std::to_string(isOdd ? below(keyCount) : index);
                const std::string value = isOdd && below(2) == 0 ? "" : std::to_string(below(1000));
                text += key + "=" + value + "\n";
                std::erase_if(section->second, isNamed(key));
                if (!value.empty())
                    section->second.emplace_back(key, value);
            }
        }
        std::string expected;
        for (const auto& [name, keys] : sections) {
            expected += "[" + name + "]\r\n";
            for (const auto& [key, value] : keys)
                expected.append(key).append("=").append(value).append("\r\n");
        }
        CIniFileContent content;
        for (const std::string& source : {text, expected}) {
            content.Parse(source, false);
            EXPECT_EQ(content.Render(), expected);
        }
    }
}

TEST(HeaderStoreTest, ReadingStopsWhenTold)
{
    CIniFileContent content;
    content.Parse("[a]\n[b]\n", true);
    EXPECT_EQ(content.Render(), "");
}

TEST(HeaderStoreTest, AHeaderMayBeAsLongAsTheLimitWithTheMarkThatEndsIt)
{
    CVELOXDConfig document;
    document.GetContent().Parse("[a]\nk=v\n", false);
    const std::string header = "[a]\r\nk=v\r\n\r\n#!";
    EXPECT_EQ(RenderHeader(document, header.size()), header);
    EXPECT_THROW(RenderHeader(document, header.size() - 1), CVELFileSaveException);
}

} // namespace
