// The header store where no file can take it: orders, limits, aborting, its own files.
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/VELConfig.h"
#include "velstdlib/util/VELException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
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
    list.SetValue("lines", "3");
    EXPECT_EQ(Rendered(list), "Points=2;lines=3;");
    EXPECT_EQ(list.GetValueT<int>("LINES", 0), 3);
    list.SetValue("POINTS", "");
    list.RemoveKey("missing");
    EXPECT_EQ(Rendered(list), "lines=3;");
    EXPECT_EQ(list.GetValue("Points", "default"), "default");
}

TEST(HeaderStoreTest, ManyChangesLeaveTheListAsItWouldBeWithoutThem)
{
    CTextStore texts;
    CVELKeyToValueList list(texts);
    for (int round = 0; round < 50; ++round) {
        for (int key = 0; key < 40; ++key)
            list.SetValue((round % 2 == 0 ? "Key" : "KEY") + std::to_string(key), std::to_string(round));
        list.RemoveKey("key7");
    }
    EXPECT_EQ(list.GetCount(), 39U);
    EXPECT_EQ(list.GetTextBytes(), 10 * 4 + 30 * 5 - 4 + 39 * 2U);
    EXPECT_TRUE(Rendered(list).starts_with("KEY0=49;KEY1=49;"));
    EXPECT_EQ(list.GetValueT<std::uint64_t>("kEy39", 0), 49U);
}

// A document the slow way: sections and keys are searched for one by one.
class CPlainDocument
{
public:
    void Parse(const std::string& line)
    {
        const auto equals = line.find('=');
        if (line.starts_with('['))
            Select(line.substr(1, line.size() - 2));
        else
            Set(line.substr(0, equals), line.substr(equals + 1));
    }

    std::string Render() const
    {
        std::string text;
        for (const auto& section : m_sections) {
            text += "[" + section.name + "]\r\n";
            for (const auto& [key, value] : section.keys)
                text.append(key).append("=").append(value).append("\r\n");
        }
        return text;
    }

private:
    struct Section
    {
        std::string name;
        std::vector<std::pair<std::string, std::string>> keys;
    };

    void Select(const std::string& name)
    {
        const auto found = std::ranges::find_if(m_sections, [&](const auto& section) {
            return veltaris::velstdlib::string::EqualFolded(section.name, name);
        });
        m_active = static_cast<std::size_t>(found - m_sections.begin());
        if (found == m_sections.end())
            m_sections.push_back({name, {}});
    }

    void Set(const std::string& key, const std::string& value)
    {
        auto& keys = m_sections[m_active].keys;
        std::erase_if(keys, [&](const auto& k) { return veltaris::velstdlib::string::EqualFolded(k.first, key); });
        if (!value.empty())
            keys.emplace_back(key, value);
    }

    std::vector<Section> m_sections;
    std::size_t m_active = 0;
};

TEST(HeaderStoreTest, SectionsThatAreAlikeOrNearlySoHoldTheirOwnKeys)
{
    std::minstd_rand random;
    const auto below = [&](std::size_t count) { return random() % count; };
    for (const std::size_t keyCount : {3U, 20U, 80U}) {
        CPlainDocument expected;
        std::string text;
        const auto add = [&](const std::string& line) {
            expected.Parse(line);
            text += line + "\n";
        };
        for (int section = 0; section < 60; ++section) {
            add((below(4) == 0 ? "[section" : "[Section") + std::to_string(below(40)) + "]");
            for (std::size_t key = 0; key < keyCount; ++key) {
                const bool isOdd = below(30) == 0;
                const std::size_t index = isOdd ? below(keyCount) : key;
                const std::string name = (below(40) == 0 ? "KEY" : "Key") + std::to_string(index);
                add(name + "=" + (isOdd && below(2) == 0 ? "" : std::to_string(below(1000))));
            }
        }
        CIniFileContent content;
        content.Parse(text, false);
        EXPECT_EQ(content.Render(), expected.Render());
        CIniFileContent again;
        again.Parse(content.Render(), false);
        EXPECT_EQ(again.Render(), expected.Render());
    }
}

TEST(HeaderStoreTest, TheOrderOfKeysRunsOutInsteadOfWrappingAround)
{
    CTextStore texts;
    CVELKeyToValueList list(texts, std::numeric_limits<std::uint64_t>::max() - 1);
    list.SetValue("a", "1");
    EXPECT_THROW(list.SetValue("b", "2"), std::runtime_error);
    EXPECT_EQ(Rendered(list), "a=1;");
}

TEST(HeaderStoreTest, NoSectionIsActiveUntilOneIsSelected)
{
    CIniFileContent content;
    EXPECT_THROW(content.GetActiveSection(), std::runtime_error);
    content.SelectCreateSection("One");
    content.GetActiveSection().SetValue("k", "v");
    content.SelectCreateSection("two");
    EXPECT_TRUE(content.SelectSection("ONE"));
    EXPECT_EQ(content.GetActiveSectionName(), "ONE");
    EXPECT_EQ(content.GetActiveSection().GetValue("K"), "v");
    EXPECT_FALSE(content.SelectSection("three"));
    EXPECT_THROW(content.GetActiveSection(), std::runtime_error);
    EXPECT_EQ(content.Render(), "[One]\r\nk=v\r\n[two]\r\n");
    EXPECT_THROW(content.SelectCreateSection(""), std::runtime_error);
}

TEST(HeaderStoreTest, ParsingStopsWhenItIsToldTo)
{
    CIniFileContent content;
    content.Parse("[a]\n[b]\n", false);
    EXPECT_EQ(content.Render(), "[a]\r\n[b]\r\n");
    content.Parse("[a]\n[b]\n", true);
    EXPECT_EQ(content.Render(), "");
    EXPECT_THROW(content.Parse("[a]\n[]\n[b]\n", false), std::runtime_error);
    EXPECT_EQ(content.Render(), "[a]\r\n") << "what was read before the failure remains";
}

TEST(HeaderStoreTest, ADocumentIsReadFromAStreamAndLeavesItBehindTheMark)
{
    CVELConfig document;
    std::istringstream stream("[a]\r\nk=v\r\n\r\n#!data");
    EXPECT_TRUE(document.IsNew());
    ASSERT_TRUE(document.ReadHeader(stream, false));
    EXPECT_FALSE(document.IsNew());
    EXPECT_EQ(document.GetDataBytes(), 4U);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "data");
    std::istringstream broken("[a]\r\n#!");
    broken.setstate(std::ios::badbit);
    EXPECT_FALSE(document.ReadHeader(broken, false)) << "a stream that fails has no header";
    EXPECT_EQ(document.GetContent().Render(), "");
}

TEST(HeaderStoreTest, ADocumentIsSavedToAFileOfItsOwn)
{
    CVELConfig document;
    const auto path = std::filesystem::temp_directory_path() / "veloxd-header-store.ini";
    document.SetFileName(path.string());
    document.GetContent().Parse("[a]\nk=\xC2\xB5\n", false);
    document.SaveKeys();
    {
        std::ifstream stream(path, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "[a]\r\nk=\xC2\xB5\r\n");
    }
    std::filesystem::remove(path);
    document.SetFileName("/nowhere/at/all");
    EXPECT_THROW(document.SaveKeys(), CVELFileOpenException);
#ifndef _WIN32 // has no disk that is always full
    document.SetFileName("/dev/full");
    EXPECT_THROW(document.SaveKeys(), std::ios_base::failure);
#endif
}

} // namespace
