#include "curves/kernels/CurveLoops.h"

namespace veltaris::curves {

const CCurveKernels avx2CurveKernels = kernelsOfThisSource;

} // namespace veltaris::curves
