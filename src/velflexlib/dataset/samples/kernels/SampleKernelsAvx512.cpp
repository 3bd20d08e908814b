#include "velflexlib/dataset/samples/kernels/SampleLoops.h"

namespace veltaris::velflexlib::dataset {

const CSampleKernels avx512Kernels = kernelsOfThisSource;

} // namespace veltaris::velflexlib::dataset
