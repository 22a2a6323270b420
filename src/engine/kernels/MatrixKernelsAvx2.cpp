// Compiled for machines with AVX2 and FMA.
#include "engine/kernels/MatrixKernelLoops.h"

namespace dravik::engine {

extern const MatrixKernels kAvx2Kernels;
constexpr MatrixKernels kAvx2Kernels = KernelLoops<8, 16>::table("AVX2");

}  // namespace dravik::engine
