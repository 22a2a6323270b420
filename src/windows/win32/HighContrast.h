// The operator's wish for strong contrasts, under which nothing is told by a shade.
#pragma once

namespace dravik::win32 {

bool isHighContrast() noexcept;

// It is wished for while the object lives; for tests and pictures.
class HighContrastOverride {
  public:
    HighContrastOverride() noexcept;
    HighContrastOverride(const HighContrastOverride&) = delete;
    HighContrastOverride& operator=(const HighContrastOverride&) = delete;
    ~HighContrastOverride();
};

}  // namespace dravik::win32
