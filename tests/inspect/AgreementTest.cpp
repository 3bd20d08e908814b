// The inspection and the library agree on what opens, and what the inspection calls certain is where it was.
#include "inspect/Inspection.h"
#include "support/Bytes.h"
#include "support/FileChecks.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <boost/log/core/core.hpp>

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
    for (std::size_t i = 0; i < end; ++i) {
        const std::string place = "byte " + std::to_string(i);
        for (const char c : std::string_view("19=[]\n\0\xFF", 8)) {
            std::string changed = bytes;
            changed[i] = c;
            use(changed, place + " changed to " + std::to_string(c));
        }
        use(std::string(bytes).erase(i, 1), place + " lost");
        use(std::string(bytes).insert(i, 1, '3'), "3 put in at " + place);
    }
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
    AgreementTest() { boost::log::core::get()->set_logging_enabled(false); }
    ~AgreementTest() override { boost::log::core::get()->set_logging_enabled(true); }

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
        for (std::size_t size = 0; size <= file.size(); ++size)
            Compare(file.substr(0, size), "the first " + std::to_string(size) + " bytes");
        ForEachDamage(file, Compare);
    }
}

TEST_F(AgreementTest, NoDamagedByteOfAHeaderMovesAChannelThatIsCalledCertain)
{
    for (const Seed& seed : Seeds()) {
        std::map<std::string, ChannelSamples> original;
        const Inspection whole = InspectBytes(seed.bytes);
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
