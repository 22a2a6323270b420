#include "engine/scene/LoneShapes.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace dravik::engine {
namespace {

// Fewer other characters tell nothing of how high the print is.
constexpr std::size_t kFewestOthers = 4;
// From its neighbours in a line, in heights of the print.
constexpr float kFar = 1.2f;
// Pixels between the edge of the picture and what it cuts off.
constexpr int kAtEdge = 2;

bool isAtEdge(const ScenePart& part, const Region& place) {
    const Region inPicture = part.place(place);
    return inPicture.left <= kAtEdge || inPicture.top <= kAtEdge ||
           inPicture.right >= part.whole.right - kAtEdge || inPicture.bottom >= part.whole.bottom - kAtEdge;
}

// The first or the last of its line, with a wide gap to the others, or the only one.
bool isAlone(const std::vector<Glyph>& glyphs, const std::vector<Region>& places, std::size_t i, float far) {
    const auto isBeside = [&](std::size_t a, std::size_t b) {
        return glyphs[a].line == glyphs[b].line && static_cast<float>(places[b].left - places[a].right) < far;
    };
    return (i == 0 || !isBeside(i - 1, i)) && (i + 1 == glyphs.size() || !isBeside(i, i + 1));
}

}  // namespace

void leaveOutLoneShapes(ScenePart& part) {
    Segmentation& found = part.found;
    if (found.glyphs.size() <= kFewestOthers) return;
    std::vector<Region> places;
    for (const Glyph& glyph : found.glyphs) places.push_back(found.place(glyph));
    std::vector<int> heights;
    for (const Region& place : places) heights.push_back(place.height());
    std::nth_element(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2),
                     heights.end());
    const float far = kFar * static_cast<float>(heights[heights.size() / 2]);
    std::vector<bool> isLone;
    int highest = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        isLone.push_back(isAlone(found.glyphs, places, i, far));
        if (!isLone.back()) highest = std::max(highest, places[i].height());
    }
    if (highest == 0) return;
    std::vector<Glyph> kept;
    for (std::size_t i = 0; i < places.size(); ++i)
        if (!isLone[i] || (places[i].height() <= highest && !isAtEdge(part, places[i])))
            kept.push_back(found.glyphs[i]);
    if (kept.size() == found.glyphs.size()) return;
    std::vector<LineMetrics> lines;
    int last = -1;
    for (Glyph& glyph : kept) {
        if (glyph.line != last) lines.push_back(found.lines[static_cast<std::size_t>(glyph.line)]);
        last = glyph.line;
        glyph.line = static_cast<int>(lines.size()) - 1;
    }
    found.glyphs = std::move(kept);
    found.lines = std::move(lines);
}

}  // namespace dravik::engine
