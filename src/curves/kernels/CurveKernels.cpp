#include "curves/kernels/CurveKernels.h"

#include "velstdlib/machine/InstructionSet.h"

namespace veltaris::curves {

namespace {

const CCurveKernels& Widest()
{
#if defined(VELOXD_WIDE_KERNELS)
    using enum velstdlib::machine::InstructionSet;
    const auto widest = velstdlib::machine::WidestInstructionSet();
    return widest == Avx512 ? avx512CurveKernels : widest == Avx2 ? avx2CurveKernels : baselineCurveKernels;
#else
    return baselineCurveKernels;
#endif
}

} // namespace

const CCurveKernels& CurveKernels()
{
    static const CCurveKernels& widest = Widest();
    return widest;
}

} // namespace veltaris::curves
