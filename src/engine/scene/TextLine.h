// A line of print as it lies in a picture, and the order in which lines are read.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <vector>

#include "base/StableSort.h"

namespace dravik::engine {

// A turned box, in image pixels.
struct TextLine {
    float angle = 0;            // radians, falling to the right
    float left = 0, right = 0;  // along the line: x * cos(angle) + y * sin(angle)
    float top = 0, bottom = 0;  // of capitals, across the line: y * cos(angle) - x * sin(angle)
    bool dark = true;           // than its background
    float score = 0;            // of the chain: its pieces, as far as they stand in a row

    float height() const noexcept { return bottom - top; }
    float middle() const noexcept { return 0.5f * (top + bottom); }
};

// Lines whose angles differ by no more are parallel.
inline constexpr float kParallel = 0.1f;  // radians

// Whether a line is parallel to another one and has some of it above or below, or is it.
inline bool isOverOrUnder(const TextLine& line, const TextLine& other) {
    return std::abs(other.angle - line.angle) <= kParallel && other.right >= line.left &&
           other.left <= line.right;
}

// Whether the longer of two lines covers a good third of the shorter one, sampled along the middle of that.
bool isSamePlace(const TextLine& a, const TextLine& b);

// The line turned about its middle.
TextLine turned(const TextLine& line, float angle);

// From top to bottom; those side by side at one height, from left to right. `lineOf` gives an element's line.
template <typename Element, typename LineOf = std::identity>
void sortInReadingOrder(std::vector<Element>& elements, LineOf lineOf = {}) {
    const auto line = [&](const Element& element) -> const TextLine& { return std::invoke(lineOf, element); };
    stableSort(elements.begin(), elements.end(),
               [&](const Element& a, const Element& b) { return line(a).middle() < line(b).middle(); });
    for (auto first = elements.begin(); first != elements.end();) {
        const auto last = std::find_if(first + 1, elements.end(), [&](const Element& element) {
            return line(element).middle() - line(*first).middle() >=
                   0.4f * std::min(line(element).height(), line(*first).height());
        });
        stableSort(first, last,
                   [&](const Element& a, const Element& b) { return line(a).left < line(b).left; });
        first = last;
    }
}

}  // namespace dravik::engine
