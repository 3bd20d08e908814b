// The limit of a header, which a test through the C interface would need gigabytes to reach.
#include "api/FileTransfer.h"
#include "velstdlib/util/VELException.h"

#include <gtest/gtest.h>

using namespace veltaris::velstdlib::util;

namespace {

TEST(FileTransferTest, AHeaderMayBeAsLongAsTheLimitWithTheMarkThatEndsIt)
{
    CVELOXDConfig document;
    document.GetContent().Parse("[a]\nk=v\n", false);
    const std::string header = "[a]\r\nk=v\r\n\r\n#!";
    EXPECT_EQ(RenderHeader(document, header.size()), header);
    EXPECT_THROW(RenderHeader(document, header.size() - 1), CVELFileSaveException);
}

} // namespace
