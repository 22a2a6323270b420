#include "windows/win32/HighContrast.h"

#include <atomic>

namespace dravik::win32 {
namespace {

std::atomic<int> overridden{0};

}  // namespace

bool isHighContrast() noexcept {
    if (overridden > 0) return true;
    HIGHCONTRASTW wish{};
    wish.cbSize = sizeof wish;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof wish, &wish, 0) &&
           (wish.dwFlags & HCF_HIGHCONTRASTON);
}

HighContrastOverride::HighContrastOverride() noexcept {
    ++overridden;
}

HighContrastOverride::~HighContrastOverride() {
    --overridden;
}

}  // namespace dravik::win32
