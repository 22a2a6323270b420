#include "engine/kernels/MatrixKernels.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <string_view>

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

const MatrixKernels& wantedKernels() {
    if (const char* name = std::getenv("DRAVIK_KERNELS"))
        for (const MatrixKernels* kernels : availableKernels())
            if (std::string_view(name) == kernels->name) return *kernels;
    return *availableKernels().front();
}

std::atomic<const MatrixKernels*>& used() {
    static std::atomic<const MatrixKernels*> kernels = &wantedKernels();
    return kernels;
}

}  // namespace

std::span<const MatrixKernels* const> availableKernels() {
    static const Available available;
    return std::span(available.kernels).first(available.count);
}

const MatrixKernels& usedKernels() {
    return *used();
}

void useKernels(const MatrixKernels& kernels) {
    used() = &kernels;
}

}  // namespace dravik::engine
