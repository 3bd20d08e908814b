#include "velflexlib/dataset/samples/kernels/SampleLoops.h"

namespace veltaris::velflexlib::dataset {

const CSampleKernels baselineKernels = kernelsOfThisSource;

} // namespace veltaris::velflexlib::dataset
