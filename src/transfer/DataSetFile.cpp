#include "transfer/DataSetFile.h"

#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/string/Texts.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileWriter.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>

namespace veltaris::transfer {

namespace dataset = velflexlib::dataset;
namespace util = velstdlib::util;

namespace {

constexpr const char* dataSetSection = "DataSet";

std::string Header(const util::CVELOXDConfig& document)
{
    std::string text = document.GetContent().Render().append("\r\n").append(util::headerEndMark);
    if (text.size() > util::limits::headerBytes)
        util::ThrowFileSave(document.GetFileName(), velstdlib::string::TextId::TooMuchTextForFile);
    return text;
}

} // namespace

std::unique_ptr<dataset::CDataSet> LoadDataSet(std::istream& stream, const std::string& fileName)
{
    const std::atomic<bool> abort = false;
    auto dataSet = std::make_unique<dataset::CDataSet>();
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    util::CVELOXDConfig document;
    document.SetFileName(fileName);
    if (document.ReadHeader(stream, abort)) {
        dataset::CDataSetToVELConfig serialiser(*dataSet);
        serialiser.LoadHeader(document, dataSetSection, abort);
        serialiser.LoadData(stream, abort);
    }
    return dataSet;
}

void SaveDataSet(dataset::CDataSet& dataSet, const std::string& fileName)
{
    dataset::CDataSetToVELConfig serialiser(dataSet);
    serialiser.CheckSavable(fileName);
    dataSet.PrepareForSave();
    util::CVELOXDConfig document;
    document.SetFileName(fileName);
    serialiser.SaveHeader(document, dataSetSection);
    const std::string header = Header(document);
    util::CFileWriter writer(fileName);
    writer.OpenInPlace(BOOST_CURRENT_LOCATION);
    writer.Write(header);
    serialiser.SaveData(writer);
    writer.Close();
}

} // namespace veltaris::transfer
