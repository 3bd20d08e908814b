#include "oxd/inspection/ModelFile.h"

#include "oxd/files/FilePath.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Platform.h"
#include "transfer/DataSetFile.h"

#include <fstream>
#include <new>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;
namespace transfer = veltaris::transfer;

// Runs a step and tells of what the streams and the library say of its failure.
template <typename Step>
auto Try(ExitCode code, const std::string& subject, const char* brokenStream, Step step)
{
    try {
        return step();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::ios_base::failure&) {
        throw Failure(code, subject, brokenStream);
    } catch (const std::exception& error) {
        throw Failure(code, subject, error.what());
    }
}

} // namespace

std::unique_ptr<model::CDataSet> LoadModel(const std::string& file)
{
    std::ifstream stream(ToPath(file), std::ios::binary);
    if (!stream.is_open()) {
        throw Failure(ExitCode::CannotOpen, file, "cannot be read again");
    }
    return Try(ExitCode::Damaged, file, "damaged, it ends before its samples do",
               [&] { return transfer::LoadDataSet(stream, file); });
}

std::string SaveModel(model::CDataSet& dataSet, OutputFile& output)
{
    std::string file = output.FileToFill();
    const auto name = platform::FileName(file);
    if (!name) {
        throw Failure(ExitCode::CannotWrite, output.Name(), "the system's code page lacks a character of this name");
    }
    Try(ExitCode::CannotWrite, output.FilledPlace(), "not written whole, is the disk full?", [&] {
        transfer::SaveDataSet(dataSet, *name);
        return 0;
    });
    return file;
}

} // namespace oxd
