#include "velflexlib/dataset/samples/kernels/SampleLoops.h"

namespace veltaris::velflexlib::dataset {

const CSampleKernels avx2Kernels = kernelsOfThisSource;

} // namespace veltaris::velflexlib::dataset
