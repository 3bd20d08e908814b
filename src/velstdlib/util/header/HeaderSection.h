// One section of a file's header as its readers see it: its keys, and what a failure says of the place.
#pragma once

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <boost/assert/source_location.hpp>

#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Refers to the section, its name and the name of the file: all three must outlive it, and it is passed by reference
// or copied, never kept. Not thread-safe, like the document that owns the section.
struct CHeaderSection
{
    const CVELKeyToValueList& keys;
    std::string_view name;
    std::string_view fileName;

    // Throws CVELFileBadContentException for what this key says, or fails to say.
    [[noreturn]] void ThrowBadContent(std::string_view key,
                                      const boost::source_location& where = BOOST_CURRENT_LOCATION) const
    {
        util::ThrowBadContent(std::string(fileName), {std::string(name), std::string(key)}, where);
    }
};

} // namespace veltaris::velstdlib::util
