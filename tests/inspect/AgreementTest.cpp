// The inspection and the library agree on what opens, and what the inspection calls certain is where it was.
#include "inspect/Inspection.h"
#include "support/Bytes.h"
#include "support/FileChecks.h"
#include "support/Lines.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using veltaris::inspect::ChannelSamples;
using veltaris::inspect::Inspection;

Inspection InspectBytes(const std::string& bytes)
{
    std::istringstream stream(bytes);
    return veltaris::inspect::InspectStream(stream, "file.oxd");
}

std::string Listed(const Inspection& inspection)
{
    std::string text;
    for (const auto& finding : inspection.findings)
        text.append(finding.rule->id).append(" ").append(finding.sentence).append("\n");
    return text;
}

// Calls use(bytes, what) with each text that one changed, lost or added byte of the header makes.
template <class Use>
void ForEachDamage(const std::string& bytes, Use use)
{
    const std::size_t end = bytes.find("#!");
    for (std::size_t i = 0; i < end; i += LOOP_STRIDE) {
        const std::string place = "byte " + std::to_string(i);
        for (const char c : std::string_view("19=[]\n\r\0\xFF", 9)) {
            std::string changed = bytes;
            changed[i] = c;
            use(changed, place + " changed to " + std::to_string(c));
        }
        use(std::string(bytes).erase(i, 1), place + " lost");
        for (const char c : {'3', '\n', '='})
            use(std::string(bytes).insert(i, 1, c), std::to_string(c) + " put in at " + place);
    }
}

// Sizes of several digits, as files have them, in each version of a section and with bits that are not the default.
std::vector<Seed> SizedSeeds()
{
    const auto section = [](const std::string& name, const std::string& version, const std::string& sizes) {
        return "[" + name + "]\nVersion=" + version + "\n" + sizes +
               "Dim0Range=5\nDim0Min=0\nDim1Range=1\nDim1Min=0\nDim2Unit=V\nDim2Range=2\nDim2Min=-1\n";
    };
    const std::string small = "Points=128\nLines=2\nSaveBits=16\n", large = "Points=1024\nLines=2\nSaveBits=16\n";
    const std::string seven = "Points=128\nLines=7\nSaveBits=16\n"; // of which no one digit makes the double
    const std::string frames = "[DataSet]\nVersion=1\nChannelCount=1\nFrameCount=3\nCh0-Fr0=A\nCh0-Fr1=B\nCh0-Fr2=C\n" +
                               section("A", "1", seven) + section("B", "1", seven) + section("C", "1", large);
    const std::string groups = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=3\nGr0-Ch0=DataSet-0:0\n"
                               "Gr0-Ch1=DataSet-0:1\nGr0-Ch2=DataSet-0:2\n" +
                               section("DataSet-0:0", "3", small) +
                               "LineDim0Range=5\nLineDim0Min=0\nLineDim0Points=64\n"
                               "LineDim1Range=5\nLineDim1Min=0\nLineDim1Points=0\n" +
                               section("DataSet-0:1", "2", large) + section("DataSet-0:2", "2", small);
    const auto file = [](const std::string& header, std::size_t samples) {
        return WithCrLf(header).append("\r\n#!").append(2 * samples, 'x');
    };
    return {{"frames", file(frames, 2 * 896 + 2048)}, {"groups", file(groups, 128 + 2048 + 256)}};
}

std::vector<std::string> WholeFiles()
{
    std::vector<std::string> files;
    for (const Seed& seed : Seeds())
        files.push_back(seed.bytes);
    for (const auto& entry : std::filesystem::directory_iterator(REGRESSIONS)) {
        if (entry.path().extension() == ".oxd")
            files.push_back(ReadBytes(entry.path().string()));
    }
    return files;
}

class AgreementTest : public ::testing::Test
{
protected:
    static void Compare(const std::string& bytes, const std::string& what)
    {
        const Inspection inspection = InspectBytes(bytes);
        const auto handle = OpenBytes(bytes);
        EXPECT_EQ(inspection.Opens(), handle != 0) << what << "\n" << VELGetLastError() << "\n" << Listed(inspection);
        CloseOxdFile(handle);
    }
};

TEST_F(AgreementTest, WhatOpensHasNoFindingThatStopsItAndTheOtherWayRound)
{
    for (const std::string& file : WholeFiles()) {
        for (std::size_t size = 0; size <= file.size(); size += LOOP_STRIDE)
            Compare(file.substr(0, size), "the first " + std::to_string(size) + " bytes");
        ForEachDamage(file, Compare);
    }
}

TEST_F(AgreementTest, NoDamagedByteOfAHeaderMovesAChannelThatIsCalledCertain)
{
    std::vector<Seed> seeds = SizedSeeds();
    seeds.insert(seeds.end(), Seeds().begin(), Seeds().end());
    for (const Seed& seed : seeds) {
        std::map<std::string, ChannelSamples> original;
        const Inspection whole = InspectBytes(seed.bytes);
        EXPECT_EQ(whole.headerBytes + whole.claimedBytes, whole.fileBytes) << seed.name;
        for (const ChannelSamples& channel : whole.channels) {
            EXPECT_TRUE(channel.isCertain);
            original[channel.section] = channel;
        }
        int certain = 0;
        ForEachDamage(seed.bytes, [&](const std::string& bytes, const std::string& what) {
            const Inspection damaged = InspectBytes(bytes);
            for (const ChannelSamples& channel : damaged.channels) {
                const auto before = original.find(channel.section);
                if (!channel.isCertain || before == original.end())
                    continue;
                ++certain;
                EXPECT_EQ(channel.offset - damaged.headerBytes, before->second.offset - whole.headerBytes)
                    << what << "\n"
                    << Listed(damaged);
                EXPECT_TRUE(channel.points == before->second.points && channel.bits == before->second.bits &&
                            channel.bytes == before->second.bytes)
                    << channel.section << " of " << seed.name << ", " << what << "\n"
                    << Listed(damaged);
            }
        });
        EXPECT_EQ(certain > 0, !original.empty());
    }
}

} // namespace
