// Views and processors as tables for people.
#pragma once

#include "oxd/info/ViewInfo.h"

#include <string>
#include <vector>

namespace oxd {

// Each begins with a blank line and a heading; empty if there are none. Control characters are replaced.
std::string ViewText(const ViewArea& area);
std::string ProcessorText(const std::vector<ProcessorInfo>& processors);

} // namespace oxd
