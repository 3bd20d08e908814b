#include "api/FileManager.h"

#include "VELOxdDll.h"
#include "api/Boundary.h"
#include "api/FileTable.h"
#include "api/FileTransfer.h"

#include <boost/throw_exception.hpp>

#include <memory>
#include <stdexcept>
#include <utility>

namespace {

CFileTable openFiles;

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
    auto file = std::make_unique<FileHandleStruct>();
    SetFileNames(*file, std::move(names));
    return openFiles.Add(std::move(file));
}

} // namespace

FileHandleStruct& GetFileHandleStruct(std::uint64_t handle)
{
    FileHandleStruct* const file = openFiles.Find(handle);
    if (!file)
        BOOST_THROW_EXCEPTION(std::runtime_error("Handle does not exist"));
    return *file;
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
    Export([&](const CCall&) { openFiles.Remove(handle); });
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
