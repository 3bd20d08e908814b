#include "api/LastChannel.h"

CLastChannel::CLastChannel(veltaris::velflexlib::dataset::CDataSet& dataSet)
{
    dataSet.OnChanged.connect([this] { m_buffer = nullptr; });
    dataSet.OnGroupChanged.connect([this](auto&) { m_buffer = nullptr; });
}
