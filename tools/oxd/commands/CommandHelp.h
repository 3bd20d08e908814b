// Help texts that several commands share.
#pragma once

namespace oxd {

// Part of the help of each command that reads an .oxd file and saves another one.
inline constexpr const char* notInSavedFiles =
    "Saving drops views, processors and sections that the library does not know: OUT\n"
    "does not have them. Channels that FILE stores in 8 bits take 16 in OUT.";

} // namespace oxd
