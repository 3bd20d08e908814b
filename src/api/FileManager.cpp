#include "api/FileManager.h"

#include "VELOxdDll.h"
#include "api/Boundary.h"
#include "api/FileTransfer.h"
#include "api/LastError.h"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace {

std::map<std::uint64_t, FileHandleStruct> openFiles;

std::uint64_t lowestFreeHandle = 1; // no handle below it is free

std::uint64_t FindFreeHandle()
{
    for (auto file = openFiles.find(lowestFreeHandle); file != openFiles.end() && file->first == lowestFreeHandle;
         ++file)
        ++lowestFreeHandle;
    return lowestFreeHandle;
}

// A file name, once for the record and once for its document. Both copies are made ahead, so that without memory for
// them neither is changed.
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

// The exports that register a file, load, save and forget it. They stand in this file because callers know its name: it
// is in the text of a failure to open or save.

uint64_t OpenOxdFile(const char* filename)
{
    return Export([&](const CCall& call) {
        const std::uint64_t handle = RegisterFile(call, filename);
        LoadFile(GetFileHandleStruct(handle), call.Where());
        return handle;
    });
}

uint64_t CreateOxdFile(const char* filename)
{
    return Export([&](const CCall& call) { return RegisterFile(call, filename); });
}

void SaveOxdFile(uint64_t handle)
{
    Export([&](const CCall& call) { SaveFile(GetFileHandleStruct(handle), call.Where()); });
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
