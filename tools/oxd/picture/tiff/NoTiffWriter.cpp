#include "oxd/picture/tiff/TiffFile.h"
#include "oxd/picture/tiff/TiffWriter.h"
#include "oxd/system/Failure.h"

namespace oxd {

std::string TiffVersion()
{
    return {};
}

TiffWriter::TiffWriter(OutputFile& output, const TiffShape&) : m_output(output)
{
    throw Failure(ExitCode::CannotWrite, output.Name(), "this build of oxd cannot write TIFF files");
}

TiffWriter::~TiffWriter() = default;

void TiffWriter::WriteRow(void*)
{
}

void TiffWriter::Finish()
{
}

} // namespace oxd
