// Loading that is told to stop or fails: what was loaded by then, and who is notified of it.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/util/VELException.h"

#include <gtest/gtest.h>

#include <atomic>
#include <istream>
#include <sstream>
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
        std::vector<std::int32_t> values(points);
        for (std::uint64_t line = 0; line < 4; ++line) {
            ASSERT_TRUE(dataSet.GetGroup(0)->GetChannelBuffer(0)->ReadLineRaw(line, GetLineOperator(LineOpID::RawData),
                                                                              values.data()));
            EXPECT_EQ(values, std::vector<std::int32_t>(points, line < linesLoaded ? 1 << 22 : 0)) << line;
        }
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

} // namespace
