// Part images rendered with FreeType, with the true place of every character, degraded in the ways that
// parts, light and cameras do. Used to measure features and training without the segmentation's share.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "engine/segmentation/Sample.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik {

using namespace engine;

// The 74 characters of the overview.
extern const std::string kOverviewCharacters;

// How bad an image may become.
enum class Tier { Clean, Typical, Hard };

// A rendered line as a perfect segmentation would find it, and the character of each glyph.
struct RenderedLine {
    Segmentation found;
    std::string text;
};

// Raises std::runtime_error for a font that cannot be read or lacks characters.
RenderedLine renderedLine(const std::string& fontFile, const std::string& text, Tier tier,
                          std::mt19937& random);

}  // namespace dravik
