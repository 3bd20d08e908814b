// Which findings a file has, and where.
#include "inspect/Inspection.h"
#include "inspect/Rules.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(InspectionTest, Runs)
{
    std::stringstream stream("");
    EXPECT_EQ(veltaris::inspect::InspectStream(stream, "x").findings.size(), 1U);
}

} // namespace
