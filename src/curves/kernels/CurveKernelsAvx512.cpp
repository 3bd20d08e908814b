#include "curves/kernels/CurveLoops.h"

namespace veltaris::curves {

const CCurveKernels avx512CurveKernels = kernelsOfThisSource;

} // namespace veltaris::curves
