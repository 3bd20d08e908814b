#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include "velstdlib/machine/InstructionSet.h"

namespace veltaris::velflexlib::dataset {

namespace {

const CSampleKernels& Widest()
{
#if defined(VELOXD_WIDE_KERNELS)
    using enum velstdlib::machine::InstructionSet;
    const auto widest = velstdlib::machine::WidestInstructionSet();
    return widest == Avx512 ? avx512Kernels : widest == Avx2 ? avx2Kernels : baselineKernels;
#else
    return baselineKernels;
#endif
}

} // namespace

const CSampleKernels& Kernels()
{
    static const CSampleKernels& widest = Widest();
    return widest;
}

} // namespace veltaris::velflexlib::dataset
