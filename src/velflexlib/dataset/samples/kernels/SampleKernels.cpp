#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

namespace veltaris::velflexlib::dataset {

namespace {

const CSampleKernels& Widest()
{
#if defined(VELOXD_WIDE_KERNELS)
    if (!__builtin_cpu_supports("fma"))
        return baselineKernels;
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl"))
        return avx512Kernels;
    if (__builtin_cpu_supports("avx2"))
        return avx2Kernels;
#endif
    return baselineKernels;
}

} // namespace

const CSampleKernels& Kernels()
{
    static const CSampleKernels& widest = Widest();
    return widest;
}

} // namespace veltaris::velflexlib::dataset
