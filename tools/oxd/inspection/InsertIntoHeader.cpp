#include "oxd/inspection/InsertIntoHeader.h"

#include "oxd/files/FilePath.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/VELConfig.h"

#include <filesystem>
#include <fstream>

namespace oxd {

namespace util = veltaris::velstdlib::util;

void InsertIntoHeader(OutputFile& output, const std::string& saved, const std::string& lines)
{
    const std::filesystem::path file = ToPath(saved);
    std::ifstream stream(file, std::ios::binary);
    const std::uint64_t headerEnd = util::FindHeaderEnd(stream, std::filesystem::file_size(file));
    stream.close();
    output.Insert(headerEnd - util::headerEndMark.size(), lines);
}

} // namespace oxd
