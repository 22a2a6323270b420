// Compiled for machines with AVX-512.
#include "engine/MatrixKernelLoops.h"

namespace dravik {

extern const MatrixKernels kAvx512Kernels;
constexpr MatrixKernels kAvx512Kernels = KernelLoops<16, 32>::table("AVX-512");

}  // namespace dravik
