#include "api/FileManager.h"

#include "VELOxdDll.h"
#include "api/Arguments.h"
#include "api/Boundary.h"
#include "api/LastError.h"
#include "api/OpenFile.h"
#include "velflexlib/dataset/DataSetToVELConfig.h"

#include <boost/throw_exception.hpp>

#include <map>
#include <stdexcept>
#include <string_view>

using veltaris::velflexlib::dataset::CDataSetToVELConfig;

namespace {

constexpr const char* dataSetSection = "DataSet";
constexpr std::string_view headerEnd = "\r\n#!";
constexpr std::int64_t bitCountOfLoadedGroups = 32;

std::map<std::uint64_t, FileHandleStruct> openFiles;

std::uint64_t FindFreeHandle()
{
    std::uint64_t handle = 1;
    while (openFiles.contains(handle))
        ++handle;
    return handle;
}

void SetFileName(FileHandleStruct& file, const char* fileName)
{
    file.fileName = fileName;
    file.config.SetFileName(fileName);
}

std::uint64_t RegisterFile(const CCall& call, const char* fileName)
{
    call.NotNull(fileName);
    const std::uint64_t handle = FindFreeHandle();
    SetFileName(RegisterFileHandle(handle), fileName);
    return handle;
}

void Load(FileHandleStruct& file, const boost::source_location& where)
{
    const std::atomic<bool> abort = false;
    auto opened = COpenFile::ForReading(file.fileName, where);
    if (file.config.ReadHeader(opened.Stream(), abort)) {
        CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
        serialiser.LoadHeader(file.config, dataSetSection, abort);
        serialiser.LoadData(opened.Stream(), abort);
    }
    opened.Stream().close();
}

// All that can be found wrong with the data set is found before anything changes, in memory or on disk.
void Save(FileHandleStruct& file, const boost::source_location& where)
{
    CheckWritable(file.fileName, where);
    CDataSetToVELConfig serialiser(file.dataSet, bitCountOfLoadedGroups);
    serialiser.CheckSavable();
    file.config.Clear();
    file.dataSet.PrepareForSave();
    serialiser.SaveHeader(file.config, dataSetSection);
    const std::string header = file.config.GetContent().Render().append(headerEnd);

    RemoveRegularFile(file.fileName);
    auto opened = COpenFile::ForWriting(file.fileName, where);
    opened.Stream().write(header.data(), static_cast<std::streamsize>(header.size()));
    serialiser.SaveData(opened.Stream());
    opened.Stream().close();
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
    Export([&](const CCall&) { openFiles.erase(handle); });
}

void ChangeOxdFilename(uint64_t handle, const char* filename)
{
    Export([&](const CCall& call) {
        FileHandleStruct& file = GetFileHandleStruct(handle);
        call.NotNull(filename);
        SetFileName(file, filename);
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
