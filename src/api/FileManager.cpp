#include "api/FileManager.h"

#include "VELOxdDll.h"
#include "api/Arguments.h"
#include "api/Boundary.h"
#include "api/LastError.h"
#include "api/OpenFile.h"
#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/files/FileWriter.h"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

using veltaris::velflexlib::dataset::CDataSetToVELConfig;

namespace {

constexpr const char* dataSetSection = "DataSet";
constexpr std::string_view headerEnd = "\r\n#!";
constexpr std::int64_t bitCountOfLoadedGroups = 32;

std::map<std::uint64_t, FileHandleStruct> openFiles;

std::uint64_t lowestFreeHandle = 1; // no handle below it is free

std::uint64_t FindFreeHandle()
{
    for (auto file = openFiles.find(lowestFreeHandle); file != openFiles.end() && file->first == lowestFreeHandle;
         ++file)
        ++lowestFreeHandle;
    return lowestFreeHandle;
}

// For the record and for its document: made ahead, so that either both have the name or, without memory, none has.
using FileNames = std::pair<std::string, std::string>;

void SetFileNames(FileHandleStruct& file, FileNames names)
{
    file.fileName = std::move(names.first);
    file.config.SetFileName(std::move(names.second));
}

std::uint64_t RegisterFile(const CCall& call, const char* fileName)
{
    call.NotNull(fileName);
    FileNames names(fileName, fileName);
    const std::uint64_t handle = FindFreeHandle();
    SetFileNames(RegisterFileHandle(handle), std::move(names));
    return handle;
}

void Load(FileHandleStruct& file, const boost::source_location& where)
{
    const std::atomic<bool> abort = false;
    COpenFile opened(file.fileName, where);
    if (file.config.ReadHeader(opened.Stream(), abort)) {
        CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
        serialiser.LoadHeader(file.config, dataSetSection, abort);
        serialiser.LoadData(opened.Stream(), abort);
    }
    opened.Stream().close();
}

std::string RenderHeader(const veltaris::velstdlib::util::CVELOXDConfig& document)
{
    std::string text = document.GetContent().Render().append(headerEnd);
    if (text.size() > veltaris::velstdlib::util::limits::headerBytes)
        veltaris::velstdlib::util::ThrowFileSave(document.GetFileName(),
                                                 veltaris::velstdlib::string::TextId::TooMuchTextForFile);
    return text;
}

// All that can be found wrong with the data set is found, and all memory taken, before the old file is touched. The
// header of the last opening or saving is kept until the new one is being written.
void Save(FileHandleStruct& file, const boost::source_location& where)
{
    CheckWritable(file.fileName, where);
    CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
    serialiser.CheckSavable(file.fileName);
    file.dataSet.PrepareForSave();
    veltaris::velstdlib::util::CVELOXDConfig document;
    document.SetFileName(file.fileName);
    serialiser.SaveHeader(document, dataSetSection);
    const std::string header = RenderHeader(document);
    veltaris::velstdlib::util::CFileWriter writer(file.fileName);

    writer.ReplaceFile(where);
    file.config.SwapContent(document);
    writer.Write(header);
    serialiser.SaveData(writer);
    writer.Close();
}

} // namespace

FileHandleStruct& RegisterFileHandle(std::uint64_t handle)
{
    const auto [file, isNew] = openFiles.try_emplace(handle);
    if (!isNew)
        StoreLastError("RegisterFileHandle: File handle already registered, returning already existing struct.");
    return file->second;
}

FileHandleStruct& GetFileHandleStruct(std::uint64_t handle)
{
    const auto file = openFiles.find(handle);
    if (file == openFiles.end())
        BOOST_THROW_EXCEPTION(std::runtime_error("Handle does not exist"));
    return file->second;
}

veltaris::velflexlib::dataset::CInfoSetItem* FindInfoItemOfAnyFile(std::uint64_t item)
{
    for (const auto& [handle, file] : openFiles) {
        if (auto* const found = file.dataSet.GetInfoSet().FindItem(item))
            return found;
    }
    return nullptr;
}

uint64_t OpenOxdFile(const char* filename)
{
    return Export([&](const CCall& call) {
        const std::uint64_t handle = RegisterFile(call, filename);
        Load(GetFileHandleStruct(handle), call.Where());
        return handle;
    });
}

uint64_t CreateOxdFile(const char* filename)
{
    return Export([&](const CCall& call) { return RegisterFile(call, filename); });
}

void SaveOxdFile(uint64_t handle)
{
    Export([&](const CCall& call) { Save(GetFileHandleStruct(handle), call.Where()); });
}

void CloseOxdFile(uint64_t handle)
{
    Export([&](const CCall&) {
        if (openFiles.erase(handle) > 0)
            lowestFreeHandle = std::min(lowestFreeHandle, handle);
    });
}

void ChangeOxdFilename(uint64_t handle, const char* filename)
{
    Export([&](const CCall& call) {
        FileHandleStruct& file = GetFileHandleStruct(handle);
        call.NotNull(filename);
        SetFileNames(file, FileNames(filename, filename));
    });
}

int32_t GetOxdVersion(uint64_t handle)
{
    return Export([&](const CCall&) {
        auto& content = GetFileHandleStruct(handle).config.GetContent();
        content.SelectSection(dataSetSection);
        return content.GetActiveSection().GetValueT<int>("Version", 1);
    });
}
