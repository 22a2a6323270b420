// Part images rendered from outline fonts, with the faults of real ones: blur, noise, uneven light, weak
// contrast, slight rotation and slant, both polarities. The same seed gives the same image.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik {

using namespace engine;

// An outline font's file; raises std::runtime_error when it cannot be read.
class OutlineFont {
  public:
    explicit OutlineFont(const std::string& file);
    ~OutlineFont();
    OutlineFont(OutlineFont&&) noexcept;

    const std::string& name() const { return name_; }

    // The lines of characters, spaced so that none touches another. `faults` scales the faults, 1 being what
    // a usual camera and printer do.
    GreyImage part(const std::vector<std::string>& lines, std::uint32_t seed, double faults) const;

  private:
    struct Face;
    std::unique_ptr<Face> face_;
    std::string name_;
};

// Files of outline fonts that are installed, one of each of some different designs.
std::vector<std::string> installedFonts();

}  // namespace dravik
