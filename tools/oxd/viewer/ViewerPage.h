// The page that shows .oxd files in a browser, as viewer/ makes it. It is built into the tool.
#pragma once

#include <string_view>

namespace oxd {

// Empty if this build has no viewer.
std::string_view ViewerPage();

} // namespace oxd
