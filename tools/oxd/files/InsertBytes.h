// Puts bytes into the middle of a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace oxd {

// Moves what stands at `place` and behind it back, part by part, so that memory stays small and no second file is
// needed. A failure leaves the file neither old nor new. Throws std::system_error with what the system says, and what
// interruption::Check throws.
void InsertBytes(const std::filesystem::path& file, std::uint64_t place, std::string_view bytes);

} // namespace oxd
