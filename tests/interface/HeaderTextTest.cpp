// The header as text: where it ends, how it is encoded, and what cannot stand in it.
#include "support/OxdTest.h"

namespace {

class HeaderTextTest : public OxdTest
{
protected:
    // The name of the first group of a file with this before and after the line that counts groups.
    std::string NameIn(const std::string& start, const std::string& lines)
    {
        const auto handle = Open(WriteOxd(start + "[DataSet]\nVersion=2\nGroupCount=1\n" + lines + "\n"));
        return GroupName(handle, 0);
    }
};

constexpr std::size_t chunk = 16'384; // of which the header is read, in search of its end

TEST_F(HeaderTextTest, TheMarkIsFoundWhereverItFallsAndWithoutAHeaderADataSetIsEmpty)
{
    const std::string head = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=N\r\nGr0-Count=1\r\nGr0-Ch0=A\r\n"
                             "[A]\r\nPoints=1\r\nLines=1\r\nX=";
    for (std::size_t length = chunk - 9; length <= chunk + 9; ++length) {
        std::string bytes = head;
        bytes.append(length - head.size() - 2, 'x').append("\r\n#!\x7F");
        WriteBytes(Path("in.oxd"), bytes);
        const auto handle = Open(Path("in.oxd"));
        EXPECT_EQ(GetChannelData_PixelRaw(handle, 0, 0, 0, 0, 0), 532676608) << length;
        CloseOxdFile(handle);
    }
    const std::string small = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\n";
    WriteBytes(Path("in.oxd"), small + std::string(chunk - small.size(), '#') + "!");
    EXPECT_EQ(GetGroupCount(Open(Path("in.oxd"))), 1U)
        << "the mark's second byte is the file's last and begins a chunk";
    for (const std::string& bytes : {std::string("#"), std::string("#!abc"), small}) {
        WriteBytes(Path("in.oxd"), bytes);
        EXPECT_EQ(GetGroupCount(Open(Path("in.oxd"))), 0U) << bytes;
    }
}

TEST_F(HeaderTextTest, LinesAreTakenAsTheyAre)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Gr0-Name= a = b \t", " a = b"},
        {" Gr0-Name=indented", "Group0"},
        {"Gr0-Name =blank", "Group0"},
        {" [Other]\n;Gr0-Name=c\nGr0-Name=same section", "same section"},
        {"[x]\n[dataset]\nGr0-Name=continued", "continued"},
        {"[x]\nGr0-Name=another section", "Group0"},
        {"Gr0-Name=kept\n=no key", "kept"},
    };
    for (const auto& [lines, name] : cases)
        EXPECT_EQ(NameIn("Gr0-Name=before every section\n", lines), name);
    WriteBytes(Path("in.oxd"), "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=unended#!");
    EXPECT_EQ(GroupName(Open(Path("in.oxd")), 0), "Group0");
}

TEST_F(HeaderTextTest, BytesThatAreNoUtf8AreTakenForTheAnsiCodePage)
{
    EXPECT_EQ(NameIn("", "Gr0-Name=\xC2\xB5m"), "\xC2\xB5m");
    EXPECT_EQ(NameIn("\xEF\xBB\xBF", "Gr0-Name=\xC2\xB5m"), "\xC2\xB5m") << "a byte-order mark is skipped";
    EXPECT_EQ(NameIn("", "Gr0-Name=\xB5m \x80\x81\x9F"), "\xC2\xB5m \xE2\x82\xAC\xC2\x81\xC5\xB8");
    EXPECT_EQ(NameIn("", "Gr0-Name=\xC0\x80"), "\xC3\x80\xE2\x82\xAC") << "an overlong form is no UTF-8";
    for (const std::string& mark : {std::string("\xFE\xFF"), std::string("\xFF\xFE"), std::string("\0\0\xFE\xFF", 4)})
        EXPECT_EQ(ReasonOfOpening(WriteOxd(mark + "[DataSet]\n")), "Not yet handled");
}

TEST_F(HeaderTextTest, TextsAreMadeFitForTheHeaderWhenTheyAreWritten)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a\r\n[x]\n#!b", "a  [x] # !b"},
        {"\xB5m", "\xC2\xB5m"},
        {" led, not trailed \t", " led, not trailed"},
        {"", "Group0"},
        {"\xF0\x9F\x94\xAC = [\xC3\xA4]", "\xF0\x9F\x94\xAC = [\xC3\xA4]"},
    };
    for (const auto& [name, saved] : cases) {
        const auto handle = Create();
        SetGroupName(handle, CreateGroup(handle, 16), name);
        const auto bytes = Saved(handle);
        EXPECT_EQ(GroupName(Open(Path("out.oxd")), 0), saved);
        EXPECT_EQ(bytes.find("#!"), bytes.size() - 2) << "the only mark is the one behind the header";
    }
}

} // namespace
