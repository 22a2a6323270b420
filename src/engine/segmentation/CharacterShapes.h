// Tells from their shapes whether found characters are whole ones: the two halves of a W, or two letters
// taken for one, look like no letter of any face. This is expensive to compute, so it only decides between
// segmentations of one image that differ by a character or two.
#pragma once

#include <array>
#include <vector>

#include "engine/segmentation/RectifiedNetwork.h"
#include "engine/segmentation/Sample.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// The inputs that the classifier sees; then the width of the character, how full its box is, room to and
// widths of both neighbours, the median width, room and stroke of all, as parts of the height of capitals;
// then how it was looked at: whether dots were joined, and the blur.
inline constexpr std::size_t kShapeTraits = kInputCount + 11;
using ShapeTraits = std::array<double, kShapeTraits>;

// Log odds that a found character is one character and whole.
using ShapeNetwork = RectifiedNetwork<kShapeTraits, 64>;
extern const ShapeNetwork kWholeCharacter;

std::vector<ShapeTraits> shapeTraits(const Segmentation& found);

// How much likelier than usual every found character is a whole one, as a logarithm.
double shapeEvidence(const Segmentation& found);

}  // namespace dravik::engine
