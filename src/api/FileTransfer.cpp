#include "api/FileTransfer.h"

#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/string/Texts.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileReader.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/files/OpenChecks.h"
#include "velstdlib/util/header/HeaderText.h"

#include <atomic>

namespace util = veltaris::velstdlib::util;
using veltaris::velflexlib::dataset::CDataSetToVELConfig;

namespace {

constexpr std::int64_t bitCountOfLoadedGroups = 32;

} // namespace

void LoadFile(FileHandleStruct& file, const boost::source_location& where)
{
    const std::atomic<bool> abort = false;
    util::CFileReader reader(file.fileName, where);
    if (file.config.ReadHeader(reader.Stream(), abort)) {
        CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
        serialiser.LoadHeader(file.config, dataSetSection, abort);
        serialiser.LoadData(reader.Stream(), abort);
    }
    reader.Stream().close();
}

void SaveFile(FileHandleStruct& file, const boost::source_location& where)
{
    util::CheckWritable(file.fileName, where);
    CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
    serialiser.CheckSavable(file.fileName);
    file.dataSet.PrepareForSave();
    util::CVELOXDConfig document;
    document.SetFileName(file.fileName);
    serialiser.SaveHeader(document, dataSetSection);
    const std::string header = RenderHeader(document, util::limits::headerBytes);
    util::CFileWriter writer(file.fileName);

    writer.OpenInPlace(where);
    file.config.SwapContent(document);
    writer.Write(header);
    serialiser.SaveData(writer);
    writer.Close();
}

std::string RenderHeader(const util::CVELOXDConfig& document, std::uint64_t limit)
{
    std::string text = document.GetContent().Render().append("\r\n").append(util::headerEndMark);
    if (text.size() > limit)
        util::ThrowFileSave(document.GetFileName(), veltaris::velstdlib::string::TextId::TooMuchTextForFile);
    return text;
}
