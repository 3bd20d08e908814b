// Loading that is told to stop, fails or finds less than was promised: what was loaded by then, and who is notified.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/operators/LineOperatorTable.h"
#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/util/VELException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <istream>
#include <new>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace veltaris::velflexlib::dataset;
using namespace veltaris::velstdlib::util;

namespace {

constexpr std::uint64_t transfer = 1U << 20U; // samples of 8 bits that are read at a time

// A file in memory that aborts the loading once so much was read at a time.
class CAbortingFile : public std::stringbuf
{
public:
    CAbortingFile(const std::string& bytes, std::atomic<bool>& abort) : std::stringbuf(bytes), m_abort(abort) {}

protected:
    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        m_abort = m_abort || count == transfer;
        return std::stringbuf::xsgetn(to, count);
    }

private:
    std::atomic<bool>& m_abort;
};

const std::string twoChannels = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch0=A\nGr0-Ch1=B\n";

std::vector<std::int32_t> LineOf(const CDataBuffer& buffer, std::uint64_t line)
{
    std::vector<std::int32_t> read(buffer.GetLineAxis(line).count);
    EXPECT_TRUE(buffer.ReadLineRaw(line, GetLineOperator(LineOpID::RawData), read.data()));
    return read;
}

TEST(LoadTest, AnAbortedLoadEndsBetweenLinesAndReleasesNotifications)
{
    for (const auto& [points, linesLoaded] : {std::pair(transfer, 1U), {transfer / 2, 2U}, {transfer * 3 / 2, 1U}}) {
        const std::string header =
            twoChannels + "[A]\nLines=4\nPoints=" + std::to_string(points) + "\n[B]\nPoints=1\nLines=1\n#!";
        std::atomic<bool> abort = false;
        CAbortingFile file(header + std::string(4 * points + 1, '\1'), abort);
        std::istream stream(&file);
        CVELConfig document;
        CDataSet dataSet;
        CDataSetToVELConfig serialiser(dataSet);
        ASSERT_TRUE(document.ReadHeader(stream, abort));
        serialiser.LoadHeader(document, "DataSet", abort);
        std::string log;
        for (const std::uint64_t channel : {0U, 1U}) {
            auto& buffer = *dataSet.GetGroup(0)->GetChannelBuffer(channel);
            buffer.OnAfterReshape.connect([&log, channel] { log += std::to_string(channel); });
        }
        serialiser.LoadData(stream, abort);
        EXPECT_TRUE(abort && stream);
        EXPECT_EQ(log, "01");
        for (std::uint64_t line = 0; line < 4; ++line)
            EXPECT_EQ(LineOf(*dataSet.GetGroup(0)->GetChannelBuffer(0), line),
                      std::vector<std::int32_t>(points, line < linesLoaded ? 1 << 22 : 0));
    }
}

TEST(LoadTest, WhatADataSetHadIsGone)
{
    CDataSet dataSet;
    CDataSetToVELConfig serialiser(dataSet);
    for (const char* const section : {"A", "B"}) {
        CVELConfig document;
        document.GetContent().Parse(twoChannels + "[A]\n[B]\n[DataSet]\nInfoSetCount=1\nInfoSet0=" + section + "\n",
                                    false);
        serialiser.LoadHeader(document, "DataSet", false);
        EXPECT_EQ(dataSet.GetGroupCount(), 1U);
        ASSERT_EQ(dataSet.GetInfoSet().GetGroups().size(), 1U);
        EXPECT_EQ(dataSet.GetInfoSet().GetGroups()[0]->GetName(), section);
    }
}

TEST(LoadTest, AFailedHeaderReleasesNotifications)
{
    CVELConfig document;
    document.GetContent().Parse(twoChannels + "[A]\nPoints=1\nLines=1\n[B]\nVersion=4\n", false);
    CDataSet dataSet;
    EXPECT_THROW(CDataSetToVELConfig(dataSet).LoadHeader(document, "DataSet", false), CVELFileVersionException);
    auto& buffer = *dataSet.GetGroup(0)->GetChannelBuffer(0);
    int changes = 0;
    buffer.OnChanged.connect([&](CDataBuffer&, std::size_t) { ++changes; });
    buffer.SetPixelRaw(0, 0, 1);
    EXPECT_EQ(changes, 1);
}

TEST(LoadTest, AFailedReadKeepsTheLinesThatWereDoneAndReleasesNotifications)
{
    CDataBuffer buffer(16, 2, 3);
    int changes = 0;
    buffer.OnChanged.connect([&](CDataBuffer&, std::size_t) { ++changes; });
    buffer.Restore(2, 3, {}, 0);
    const auto fail = [](std::span<std::byte> bytes, SampleWidth, std::size_t& filled) {
        std::ranges::fill(bytes.first(7), std::byte{1});
        filled = 7;
        throw std::runtime_error("the disk is gone");
    };
    EXPECT_THROW(buffer.LoadSamples(100, fail), std::runtime_error);
    EXPECT_EQ(LineOf(buffer, 0), (std::vector{0x0101 << 14, 0x0101 << 14}));
    EXPECT_TRUE(LineOf(buffer, 1).empty() && LineOf(buffer, 2).empty());
    buffer.SetPixelRaw(1, 2, 8);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(LineOf(buffer, 1), (std::vector{0, 0})) << "a write makes ordinary lines of the missing ones";
    EXPECT_EQ(LineOf(buffer, 2), (std::vector{0, 8}));
}

TEST(LoadTest, AHeaderMayPromiseMoreThanAnyChannelCanHold)
{
    CDataBuffer buffer(16, 3, 4);
    std::string log;
    buffer.OnBeforeReshape.connect([&] { log += '<'; });
    buffer.OnAfterReshape.connect([&] { log += '>'; });
    buffer.OnChanged.connect([&](CDataBuffer&, std::size_t) { log += 'c'; });
    buffer.Restore(65536, (1ULL << 31) - 1, {}, 0);
    EXPECT_FALSE(buffer.LoadSamples(65536 * 4 - 1, [](auto bytes, auto...) { std::ranges::fill(bytes, std::byte{}); }));
    EXPECT_EQ(buffer.GetStoredSampleCount(), 65536U);
    EXPECT_THROW(buffer.SetPixelRaw(0, 1, 1), std::bad_alloc);
    EXPECT_TRUE(LineOf(buffer, 1).empty() && LineOf(buffer, (1ULL << 31) - 2).empty());
    EXPECT_THROW(buffer.Restore(1, 1ULL << 31, {}, 0), std::bad_alloc);
    buffer.SetPixelRaw(0, 0, 1);
    EXPECT_EQ(log, "<>c") << "a size that is refused holds no notifications back";
}

} // namespace
