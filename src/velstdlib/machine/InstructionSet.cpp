#include "velstdlib/machine/InstructionSet.h"

namespace veltaris::velstdlib::machine {

InstructionSet WidestInstructionSet()
{
#if defined(__x86_64__)
    if (!__builtin_cpu_supports("fma"))
        return InstructionSet::Baseline;
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl"))
        return InstructionSet::Avx512;
    if (__builtin_cpu_supports("avx2"))
        return InstructionSet::Avx2;
#endif
    return InstructionSet::Baseline;
}

} // namespace veltaris::velstdlib::machine
