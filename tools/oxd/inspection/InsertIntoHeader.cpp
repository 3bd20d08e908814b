#include "oxd/inspection/InsertIntoHeader.h"

#include "oxd/files/FilePath.h"
#include "oxd/files/Reopen.h"
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

std::uint64_t HeaderEnd(const std::string& saved)
{
    std::ifstream stream = Reopen(saved);
    stream.exceptions(std::ios::badbit); // so that a lack of memory stays one
    return util::FindHeaderEnd(stream, std::filesystem::file_size(ToPath(saved)));
}

} // namespace

void InsertIntoHeader(OutputFile& output, const std::string& saved, const std::string& lines)
{
    output.Insert(HeaderEnd(saved) - endBytes, lines);
}

} // namespace oxd
