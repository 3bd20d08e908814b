#include "velflexlib/dataset/information/InfoHandles.h"

namespace veltaris::velflexlib::dataset {

const std::shared_ptr<CNodeTable>& CInfoHandles::TheTable()
{
    static const auto table = std::make_shared<CNodeTable>();
    return table;
}

} // namespace veltaris::velflexlib::dataset
