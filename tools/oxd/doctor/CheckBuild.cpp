#include "oxd/doctor/CheckBuild.h"

#include "oxd/library/DataSet.h"
#include "oxd/picture/tiff/TiffWriter.h"
#include "oxd/system/Platform.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"
#include "velstdlib/machine/InstructionSet.h"

#include <cairo.h>
#include <png.h>

namespace oxd {

namespace {

#if defined(__clang__)
constexpr const char* compiler = __VERSION__;
#else
constexpr const char* compiler = "GCC " __VERSION__;
#endif

std::string FileText(const std::string& file)
{
    return file.empty() ? "in a file that the system does not name" : file;
}

// The library that the process has loaded, which need not be the one that was installed with the tool.
Check CheckLibrary(const std::string& toolVersion)
{
    const platform::LoadedFile library = platform::FileOf(reinterpret_cast<const void*>(&OpenOxdFile));
    const bool isKnown = !library.version.empty();
    Check check{"library", (isKnown ? library.version : "of unknown version") + ", " + FileText(library.name)};
    if (isKnown && library.version != toolVersion) {
        check.remedy =
            "Install tool and library of the same version, or remove the other library from the search path.";
    }
    return check;
}

// The library chooses its loops like this, too.
std::string InstructionSet()
{
    namespace dataset = veltaris::velflexlib::dataset;
    namespace machine = veltaris::velstdlib::machine;
    if (&dataset::Kernels() == &dataset::baselineKernels) {
        return "baseline";
    }
    return machine::WidestInstructionSet() == machine::InstructionSet::Avx512 ? "AVX-512" : "AVX2";
}

} // namespace

void CheckBuild(const std::string& toolVersion, Checks& checks)
{
    checks.push_back({"tool", toolVersion + ", " + FileText(platform::ProgramFile())});
    checks.push_back(CheckLibrary(toolVersion));
    checks.push_back({"compiler", compiler});
    checks.push_back({"cairo", cairo_version_string()});
    checks.push_back({"libpng", png_get_libpng_ver(nullptr)});
    checks.push_back({"libtiff", TiffVersion().empty() ? "none: this build cannot write .tif files" : TiffVersion()});
    checks.push_back({"instructions", InstructionSet()});
}

} // namespace oxd
