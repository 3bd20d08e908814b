// Names of files as URIs.
#pragma once

#include <string>

namespace oxd {

// A name in UTF-8: an absolute one becomes file://..., a relative one a relative reference. What a URI cannot have, and
// what would mean something else in one, is percent-encoded.
std::string FileUri(const std::string& file);

} // namespace oxd
