#include "oxd/inspection/InsertIntoHeader.h"

#include "oxd/files/FilePath.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/VELConfig.h"

#include <filesystem>
#include <fstream>
#include <string_view>

namespace oxd {

namespace util = veltaris::velstdlib::util;

namespace {

// The library writes the end mark behind an empty line.
constexpr std::uint64_t endBytes = std::string_view("\r\n").size() + util::headerEndMark.size();

} // namespace

void InsertIntoHeader(OutputFile& output, const std::string& saved, const std::string& lines)
{
    const std::filesystem::path file = ToPath(saved);
    std::ifstream stream(file, std::ios::binary);
    const std::uint64_t headerEnd = util::FindHeaderEnd(stream, std::filesystem::file_size(file));
    stream.close();
    output.Insert(headerEnd - endBytes, lines);
}

} // namespace oxd
