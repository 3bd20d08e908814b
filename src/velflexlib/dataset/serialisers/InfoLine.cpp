#include "velflexlib/dataset/serialisers/InfoLine.h"

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/header/HeaderText.h"

#include <boost/current_function.hpp>

namespace veltaris::velflexlib::dataset {

CInfoLine WrittenLine(std::string_view name, std::string_view value)
{
    CInfoLine line{velstdlib::util::CleanHeaderText(name), velstdlib::util::CleanHeaderText(value)};
    line.value = velstdlib::string::WithoutTrailingSpace(line.value);
    if (const auto equals = line.key.find('='); equals != std::string::npos && !line.value.empty()) {
        line.value = line.key.substr(equals + 1).append("=").append(line.value);
        line.key.resize(equals);
    }
    if (line.key.starts_with('[') && line.value.ends_with(']')) {
        line.key.insert(line.key.begin(), ' ');
        velstdlib::util::LogChangedText(BOOST_CURRENT_FUNCTION, line.key);
    }
    if (line.key.empty())
        line.key.push_back(' '); // the shortest name that there is
    return line;
}

} // namespace veltaris::velflexlib::dataset
