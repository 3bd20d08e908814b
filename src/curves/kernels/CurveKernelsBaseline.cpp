#include "curves/kernels/CurveLoops.h"

namespace veltaris::curves {

const CCurveKernels baselineCurveKernels = kernelsOfThisSource;

} // namespace veltaris::curves
