// What is saved from a file that was cut off or damaged is what the file held, and as much of it as is certain.
#include "salvage/Salvage.h"
#include "support/Lines.h"
#include "support/Seeds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace dataset = veltaris::velflexlib::dataset;
using namespace veltaris::salvage;
using veltaris::inspect::ChannelSamples;
using veltaris::inspect::Inspection;

// Two groups: one with two channels of the same size, one with channels of other sizes and lines of their own.
const std::string groupsOfScan =
    "[DataSet]\nVersion=2\nGroupCount=2\nGr0-Name=ForwardScan\nGr0-ID=0\nGr0-Count=2\nGr1-Name=Spectroscopy\nGr1-ID=1\n"
    "Gr1-Count=3\nGr0-Ch0=DataSet-0:0\nGr0-Ch1=DataSet-0:1\nGr1-Ch0=DataSet-1:0\nGr1-Ch2=DataSet-1:2\n"
    "SetInfos=DataSet-Info\nInfoSetCount=1\nInfoSet0=Instrument\n[DataSet-Info]\n-- Scan --=--------\nLines=12\n"
    "Points=17\nComment=watch out!\n[DataSet\\Instrument]\nSubSectionCount=0\nVersion=3\n";
const std::string image = "Version=2\nPoints=17\nLines=12\nFrame=ForwardScan\nCurLine=0\nDim0Name=X\nDim0Unit=m\n"
                          "Dim0Range=1e-06\nDim0Min=0\nDim2Name=Z\nDim2Range=2\nSaveMode=Binary\nSaveBits=16\n";
const std::string curves =
    "Version=3\nPoints=9\nLines=4\nFrame=Spectroscopy\nDim0Range=1\nLineDim0Range=1\nLineDim0Min=0\nLineDim0Points=9\n"
    "LineDim1Range=1\nLineDim1Min=0\nLineDim1Points=0\nLineDim2Range=1\nLineDim2Min=0\nLineDim2Points=6\n"
    "LineDim3Range=2\nLineDim3Min=0\nLineDim3Points=9\nSaveMode=Binary\nSaveBits=32\n";
const std::string last = "Version=2\nPoints=5\nLines=3\nFrame=Spectroscopy\nDim0Range=1\nSaveBits=8\n";
const std::string headerOfScan = groupsOfScan + "[DataSet-0:0]\n" + image + "[DataSet-0:1]\n" + image +
                                 "[DataSet-1:0]\n" + curves + "[DataSet-1:2]\n" + last;
constexpr std::size_t imageBytes = 408, curveBytes = 36, lastBytes = 15; // 17 x 12 of 2, 9 of 4, 5 x 3 of 1
constexpr std::size_t bytesOfScan = 2 * imageBytes + 3 * curveBytes + lastBytes;

// Bytes of which no run stands twice.
std::string Samples(std::size_t count)
{
    std::mt19937 random(1);
    std::string bytes;
    while (bytes.size() < count)
        bytes.push_back(static_cast<char>(random()));
    return bytes;
}

std::string Scan()
{
    return WithCrLf(headerOfScan).append("\r\n#!").append(Samples(bytesOfScan));
}

std::vector<std::string> WholeFiles()
{
    std::vector<std::string> files{Scan()};
    for (const Seed& seed : Seeds())
        files.push_back(seed.bytes);
    return files;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to, std::string_view behind = "")
{
    const auto at = text.find(from, text.find(behind));
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

Salvaged SalvageBytes(const std::string& bytes, bool trust = false)
{
    std::istringstream stream(bytes);
    return Salvage(stream, "file.oxd", trust);
}

Inspection InspectBytes(const std::string& bytes)
{
    std::istringstream stream(bytes);
    return veltaris::inspect::InspectStream(stream, "file.oxd");
}

// A file as it was, and what its channels hold.
class Original
{
public:
    explicit Original(const std::string& bytes) : m_bytes(bytes), m_inspection(InspectBytes(bytes))
    {
        for (const ChannelSamples& channel : m_inspection.channels)
            m_channels[channel.section] = &channel;
    }

    // Compares all samples of the channel with those in the file. Returns what differs.
    std::string Compare(const std::string& section, const dataset::CDataBuffer& buffer) const
    {
        const auto found = m_channels.find(section);
        std::string wrong;
        buffer.AccessSamples([&](const dataset::CSampleBlock& block) {
            for (std::uint64_t line = 0; line < block.Held().End() && wrong.empty(); ++line) {
                const dataset::CStoredSamples samples = block.Line(line);
                if (samples.Count() > 0 && (found == m_channels.end() || !IsSame(*found->second, line, samples)))
                    wrong = section + " line " + std::to_string(line);
            }
        });
        return wrong;
    }

private:
    bool IsSame(const ChannelSamples& channel, std::uint64_t line, const dataset::CStoredSamples& samples) const
    {
        const auto buffer = m_inspection.dataSet->GetAllGroups()[channel.group]->GetChannelBuffer(channel.slot);
        const auto held = buffer->GetLineAxes().LinesWithSamples(channel.lines);
        const auto width = dataset::WidthOfBits(channel.bits);
        if (!held.Contains(line) || samples.Count() > channel.points)
            return false;
        const std::uint64_t offset =
            channel.offset + held.RowOf(line) * channel.points * dataset::BytesPerSample(width);
        std::vector<std::int32_t> aligned(channel.points);
        auto* const stored = reinterpret_cast<std::byte*>(aligned.data());
        m_bytes.copy(reinterpret_cast<char*>(stored), channel.points * dataset::BytesPerSample(width), offset);
        const dataset::CStoredSamples own(stored, width, channel.points);
        for (std::uint64_t point = 0; point < samples.Count(); ++point) {
            if (own.At(point) != samples.At(point))
                return false;
        }
        return true;
    }

    std::string m_bytes;
    Inspection m_inspection;
    std::map<std::string, const ChannelSamples*> m_channels; // by section
};

std::string StateOf(const LineRange& range)
{
    return std::string(1, "SEM?"[static_cast<int>(range.state)]) + std::to_string(range.count);
}

// For example "S12 | S3 M9", for two channels.
std::string Summary(const Salvaged& salvaged)
{
    std::string text;
    for (const SalvagedChannel& channel : salvaged.channels) {
        text += text.empty() ? "" : " |";
        for (const LineRange& range : channel.ranges)
            text += (text.empty() ? "" : " ") + StateOf(range);
    }
    return text;
}

class SalvageTest : public ::testing::Test
{
protected:
    SalvageTest() { std::filesystem::create_directories(m_folder); }
    ~SalvageTest() override { std::filesystem::remove_all(m_folder); }

    std::string Saved(const Salvaged& salvaged) const
    {
        const std::string path = (m_folder / "out.oxd").string();
        Save(salvaged, path);
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    // Returns how many lines were saved.
    static std::uint64_t ExpectOwnSamples(const Original& original, const Salvaged& salvaged, const std::string& what)
    {
        std::uint64_t count = 0;
        const auto groups = salvaged.dataSet->GetAllGroups();
        for (const SalvagedChannel& channel : salvaged.channels) {
            count += channel.savedLines;
            EXPECT_EQ(original.Compare(channel.section, *groups[channel.group]->GetChannelBuffer(channel.slot)), "")
                << what << "\n"
                << Summary(salvaged);
        }
        return count;
    }

    // The saved file opens, and holds these samples and no others.
    void ExpectSavedAlike(const Original& original, const Salvaged& salvaged, const std::string& what) const
    {
        const std::string bytes = Saved(salvaged);
        EXPECT_TRUE(InspectBytes(bytes).Opens()) << what;
        Salvaged again = SalvageBytes(bytes);
        ASSERT_EQ(again.channels.size(), salvaged.channels.size()) << what;
        for (std::size_t c = 0; c < again.channels.size(); ++c) {
            EXPECT_EQ(again.channels[c].savedLines, salvaged.channels[c].savedLines) << what << " " << bytes;
            again.channels[c].section = salvaged.channels[c].section;
        }
        ExpectOwnSamples(original, again, what + ", saved");
    }

private:
    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("veloxd-salvage-" + std::to_string(::getpid()));
};

// One damaged byte of a header, from random numbers.
struct Damage
{
    std::size_t place;
    enum
    {
        Changed,
        Lost,
        PutIn
    } kind;
    char other;

    std::string Apply(std::string bytes) const
    {
        if (kind == PutIn)
            return bytes.insert(place, 1, other);
        if (kind == Lost)
            return bytes.erase(place, 1);
        bytes[place] = other;
        return bytes;
    }
    std::string Text() const
    {
        return "byte " + std::to_string(place) +
               (kind == Lost    ? " lost"
                : kind == PutIn ? ", put in "
                                : " changed to ") +
               std::to_string(other);
    }
};

// Every other new byte is one of those that headers are made of.
Damage MakeDamage(std::mt19937& random, std::size_t headerBytes)
{
    constexpr std::string_view usual = "0123456789=[]-:\r\n#!";
    const auto below = [&](std::size_t end) { return static_cast<std::size_t>(random()) % end; };
    const char other = below(2) == 0 ? usual[below(usual.size())] : static_cast<char>(below(256));
    const std::size_t kind = below(4);
    return {below(headerBytes), kind == 0 ? Damage::Lost : kind == 1 ? Damage::PutIn : Damage::Changed, other};
}

TEST_F(SalvageTest, EveryPrefixGivesSamplesOfTheFileAndNoOthers)
{
    for (const std::string& file : WholeFiles()) {
        const Original original(file);
        std::uint64_t most = 0;
        for (std::size_t size = file.size() % LOOP_STRIDE; size <= file.size(); size += LOOP_STRIDE) {
            const std::string what = "the first " + std::to_string(size) + " bytes";
            const Salvaged salvaged = SalvageBytes(file.substr(0, size));
            most = std::max(most, ExpectOwnSamples(original, salvaged, what));
            if (size % 8 == 0)
                ExpectSavedAlike(original, salvaged, what);
        }
        EXPECT_EQ(most > 0, !InspectBytes(file).channels.empty());
    }
}

TEST_F(SalvageTest, TenThousandDamagedBytesOfHeadersBringUpNoSampleThatWasNotThere)
{
    std::mt19937 random(2);
    for (const std::string& file : WholeFiles()) {
        const Original original(file);
        const std::uint64_t lines = ExpectOwnSamples(original, SalvageBytes(file), "whole");
        const int count = (file == Scan() ? 7000 : 1000) / LOOP_STRIDE;
        int whole = 0;
        for (int i = 0; i < count; ++i) {
            const Damage damage = MakeDamage(random, file.find("#!") + 2);
            const Salvaged salvaged = SalvageBytes(damage.Apply(file));
            whole += ExpectOwnSamples(original, salvaged, damage.Text()) == lines ? 1 : 0;
            if (i % 16 == 0)
                ExpectSavedAlike(original, salvaged, damage.Text());
        }
        EXPECT_GT(whole, count / 4); // most of a header does not touch upon samples
    }
}

TEST_F(SalvageTest, SavesWhatIsCertainAndNoMore)
{
    const std::string scan = Scan();
    const std::string whole = "S12 | S12 | S1 E1 S2 | S3";
    const auto cut = [&](std::size_t bytes) { return scan.substr(0, scan.size() - bytesOfScan + bytes); };
    const auto changed = [&](std::string_view from, std::string_view to, std::string_view behind = "") {
        return Replaced(scan, from, to, behind);
    };
    struct
    {
        std::string bytes;
        std::string lines;
        HeaderState header = HeaderState::AsItStands;
    } const cases[] = {
        {scan, whole},
        // Cut off in a line of the second, the third and the last channel.
        {cut(imageBytes + 100), "S12 | S2 M10 | M4 | M3"},
        {cut(2 * imageBytes + 2 * curveBytes + 1), "S12 | S12 | S1 E1 S1 M1 | M3"},
        {cut(bytesOfScan - 7), "S12 | S12 | S1 E1 S2 | S1 M2"},
        // A section that nothing names does not make the order of the others doubtful.
        {changed("[DataSet-0:0]", "[Old]\r\nPoints=5\r\nLines=3\r\nSaveBits=8\r\n[DataSet-0:0]"), whole},
        // Numbers that are none, and heads, links, counts and versions that only one text fits.
        {changed("Points=17", "Points=1X", "[DataSet-0:0]"), whole, HeaderState::Repaired},
        {changed("Points=5", "Pints=5"), whole, HeaderState::Repaired},
        {changed("SaveBits=8", "SaveBits=!"), whole, HeaderState::Repaired},
        {changed("Version=2", "Version=7", "[DataSet-0:1]"), whole, HeaderState::Repaired},
        {changed("Version=2", "Version=7"), whole, HeaderState::Repaired},
        {changed("GroupCount=2", "GroupCount=1"), whole, HeaderState::Repaired},
        {changed("Gr1-Count=3", "Gr1-Cunt=3"), whole, HeaderState::Repaired},
        {changed("=DataSet-1:0", "=DataSet-1:9"), whole, HeaderState::Repaired},
        {changed("[DataSet-0:1]", "[DataSet-0:1"), whole, HeaderState::Repaired},
        {changed("\r\n#!", "\r\n#?"), whole, HeaderState::Repaired},
        {changed("out!", "ou#!"), whole, HeaderState::Repaired},
        // One digit of several may have been another: what they have in common is certain.
        {changed("Points=17", "Points=15", "[DataSet-0:0]"), "?12 | ?12 | S1 E1 S2 | S3", HeaderState::Ambiguous},
        {changed("Points=5", "Points=3"), "S12 | S12 | S1 E1 S2 | ?3", HeaderState::Ambiguous},
        {changed("LineDim0Points=9", "LineDim0Points=0"), "S12 | S12 | ?4 | S3", HeaderState::Ambiguous},
        {changed("LineDim1Points=0", "LineDim1Points=x"), whole, HeaderState::Repaired},
        {changed("Points=9", "Points=8", "[DataSet-1:0]"), whole, HeaderState::Repaired},
        {changed("Lines=4", "Lines=3", "[DataSet-1:0]"), whole, HeaderState::Repaired},
        // The file may as well have been cut off.
        {changed("Points=17", "Points=18", "[DataSet-0:1]"), "?12 | ?12 | ?4 | ?3"},
        {changed("Points=5", "Points=6"), "S12 | S12 | S1 E1 S2 | ?3"},
        // More than one byte is damaged: what stands before it is certain.
        {changed("Points=17", "Points=XYZ", "[DataSet-0:1]"), "S12 | ?12 | ?4 | ?3"},
        {changed("Version=3\r\nPoints=9", "Version=77\r\nPoints=X"), "S12 | S12 | | ?3"},
        {scan + "more", "?12 | ?12 | ?4 | ?3"},
        // Without the end of the header nobody knows where samples begin.
        {scan.substr(0, scan.find("[DataSet-1:2]")), "?12 | ?12 | ?4 |", HeaderState::Cut},
        {scan.substr(0, scan.size() - bytesOfScan - 1), "?12 | ?12 | ?4 | ?3", HeaderState::Cut},
        {"no header at all", "", HeaderState::Cut},
    };
    int number = 0;
    for (const auto& [bytes, lines, header] : cases) {
        const Salvaged salvaged = SalvageBytes(bytes);
        const std::string which = "case " + std::to_string(number++);
        EXPECT_EQ(Summary(salvaged), lines) << which;
        EXPECT_EQ(salvaged.header, header) << which;
        EXPECT_EQ(salvaged.HasContent(), !lines.empty()) << which;
    }
    EXPECT_EQ(Summary(SalvageBytes(changed("Points=5", "Points=6"), true)), "S12 | S12 | S1 E1 S2 | S2 M1");
}

TEST_F(SalvageTest, KeepsInformationAndAxes)
{
    const std::string cut = Scan().substr(0, Scan().find("[DataSet-1:0]"));
    const std::string saved = Saved(SalvageBytes(cut));
    for (const char* const kept : {"Comment=watch out!\r\n", "[DataSet\\Instrument]", "Dim0Unit=m\r\n"})
        EXPECT_NE(saved.find(kept), std::string::npos) << saved;
}

// A file of a few bytes may promise more lines than any file can have without samples.
TEST_F(SalvageTest, SavesNoMoreLinesWithoutSamplesThanAFileMayHave)
{
    const std::string huge = Replaced(Scan(), "Lines=3", "Lines=2000000000");
    const Salvaged salvaged = SalvageBytes(huge, true);
    ASSERT_EQ(salvaged.channels.size(), 4);
    EXPECT_EQ(salvaged.channels[3].lines, 2000000000);
    EXPECT_EQ(salvaged.channels[3].heldLines, 3);
    EXPECT_TRUE(InspectBytes(Saved(salvaged)).Opens());
}

} // namespace
