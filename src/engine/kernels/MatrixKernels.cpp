#include "engine/kernels/MatrixKernels.h"

#include <array>

#include "engine/kernels/MatrixKernelLoops.h"

namespace dravik::engine {

#ifdef DRAVIK_X86_KERNELS
extern const MatrixKernels kAvx2Kernels, kAvx512Kernels;
#endif

namespace {

constexpr MatrixKernels kUsualKernels = KernelLoops<4, 16>::table("128-bit");

struct Available {
    std::array<const MatrixKernels*, 3> kernels{};
    std::size_t count = 0;

    Available() {
#ifdef DRAVIK_X86_KERNELS
        if (__builtin_cpu_supports("avx512f")) kernels[count++] = &kAvx512Kernels;
        if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) kernels[count++] = &kAvx2Kernels;
#endif
        kernels[count++] = &kUsualKernels;
    }
};

}  // namespace

std::span<const MatrixKernels* const> availableKernels() {
    static const Available available;
    return std::span(available.kernels).first(available.count);
}

}  // namespace dravik::engine
