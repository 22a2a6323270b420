// Compiled for machines with AVX-512.
#include "engine/kernels/MatrixKernelLoops.h"

namespace dravik::engine {

extern const MatrixKernels kAvx512Kernels;
constexpr MatrixKernels kAvx512Kernels = KernelLoops<16, 32>::table("AVX-512");

}  // namespace dravik::engine
