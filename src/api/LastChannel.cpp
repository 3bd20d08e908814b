#include "api/LastChannel.h"

CLastChannel lastChannel;

CLastChannelGuard::CLastChannelGuard(veltaris::velflexlib::dataset::CDataSet& dataSet)
{
    dataSet.OnChanged.connect([] { lastChannel.Forget(); });
    dataSet.OnGroupChanged.connect([](auto&) { lastChannel.Forget(); });
}
