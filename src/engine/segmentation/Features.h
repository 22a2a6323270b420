// The features of a found character. The grid is laid over a box between the character's own and that of its
// line, so that the values keep something of aspect, size and place: a small o differs from a capital O, a
// comma from an apostrophe.
#pragma once

#include "engine/segmentation/Sample.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

SampleInputs glyphInputs(const Segmentation& found, const Glyph& glyph, const LineMetrics& line);

}  // namespace dravik::engine
