// Reading parameters with a unit from the keys of a section, and writing them there. Not thread-safe for the same
// section.
#pragma once

#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <string_view>

namespace veltaris::velflexlib::fx {

// Returns the parameter under the key, or the default if the key is missing or empty. A value without a unit is taken
// to be in the unit of the default. A value that cannot be parsed gives the default, too, and a warning in the log.
CFxProperty ReadFxProperty(const velstdlib::util::CVELKeyToValueList& keys, std::string_view key,
                           const CFxProperty& defaultValue);

// Characters of the unit that a header cannot hold are replaced.
void WriteFxProperty(velstdlib::util::CVELKeyToValueList& keys, std::string_view key, const CFxProperty& property);

} // namespace veltaris::velflexlib::fx
