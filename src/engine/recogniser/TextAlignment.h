// Divides print into exactly the characters of a text that it is said to show: what was found freely, its
// cuts and joins and what was left out, by what each piece looks like. How much likelier that is than a text
// of one character more or less tells whether the text may be right.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

struct TextDivision {
    // Of each view, in reading order; as many as the text has characters.
    std::vector<std::vector<Glyph>> characters;
    // Logarithms: how likely the characters are those of the text, and how likely they would be if the text
    // lacked one that is printed or had one that is not, at the place where that helps most.
    double likelihood = 0, withError = -1e9;
    double agreement = 0;  // share of the characters that may well be what the text says
};

// `views` show, one after the other, all that the text tells. Nothing where there is no such division.
std::optional<TextDivision> divideByText(std::span<const Segmentation* const> views,
                                         std::span<const std::string> text);

}  // namespace dravik::engine
