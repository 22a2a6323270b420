#include "engine/scene/OtherThings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "engine/image/Median.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Fewer other characters tell nothing of how high the print is.
constexpr std::size_t kFewestOthers = 4;
// A wide gap in a line, in heights of the print and in usual gaps.
constexpr float kFar = 1.2f, kFarGaps = 1.6f;
// So few characters that stand together may all be of one hole.
constexpr int kFew = 2;
// Pixels between the edge of the picture and what it cuts off.
constexpr int kAtEdge = 2;
// The side of a frame is at most so wide, in its own heights, and reaches beyond characters by so much of
// theirs.
constexpr float kSlim = 0.15f, kBeyond = 0.12f;
// What is the edge of something goes on beyond its box for so many heights of the print, and is there as
// unlike the ground as in the box, by this part.
constexpr float kGoesOn = 0.3f, kAsUnlike = 0.75f;
// A shape that goes on to more sides does not stand out at all.
constexpr int kMostSides = 2;

// The characters of a part, and what they tell of one another.
struct Shapes {
    std::vector<Region> places;
    float height = 0;           // usual, in pixels
    std::vector<int> together;  // how many stand by each without a wide gap, itself one of them
    int highest = 0;            // of those that do not stand alone
};

Shapes shapesOf(const Segmentation& found) {
    Shapes result;
    std::vector<float> heights;
    for (const Glyph& glyph : found.glyphs) {
        result.places.push_back(found.place(glyph));
        heights.push_back(static_cast<float>(result.places.back().height()));
    }
    result.height = median(std::move(heights));
    const float far = std::max(kFar * result.height, kFarGaps * usualGap(found));
    const auto isApart = [&](std::size_t i) {
        return found.glyphs[i].line != found.glyphs[i - 1].line ||
               static_cast<float>(result.places[i].left - result.places[i - 1].right) >= far;
    };
    for (std::size_t first = 0, end = 0; first < found.glyphs.size(); first = end) {
        do ++end;
        while (end < found.glyphs.size() && !isApart(end));
        result.together.resize(end, static_cast<int>(end - first));
    }
    for (std::size_t i = 0; i < result.places.size(); ++i)
        if (result.together[i] > 1) result.highest = std::max(result.highest, result.places[i].height());
    return result;
}

bool isAtEdge(const ScenePart& part, const Region& place) {
    const Region inPicture = part.place(place);
    return inPicture.left <= kAtEdge || inPicture.top <= kAtEdge ||
           inPicture.right >= part.whole.right - kAtEdge || inPicture.bottom >= part.whole.bottom - kAtEdge;
}

// Slim, and from above the other characters of its line to below them.
bool isSideOfFrame(const Segmentation& found, const Shapes& shapes, std::size_t i) {
    const Region& bar = shapes.places[i];
    if (static_cast<float>(bar.width()) > kSlim * static_cast<float>(bar.height())) return false;
    const float beyond = kBeyond * shapes.height;
    int others = 0;
    for (std::size_t k = 0; k < shapes.places.size(); ++k) {
        if (k == i || found.glyphs[k].line != found.glyphs[i].line) continue;
        const Region& other = shapes.places[k];
        if (static_cast<float>(other.top - bar.top) < beyond ||
            static_cast<float>(bar.bottom - other.bottom) < beyond)
            return false;
        ++others;
    }
    return others > 1;
}

// Levels of the image that a part was made of, by the part's own pixels; print has the higher ones.
class LevelsThere {
  public:
    LevelsThere(const GreyImage& image, const ScenePart& part)
        : image_(image), part_(part), c_(std::cos(part.angle)), s_(std::sin(part.angle)) {}

    // Nothing outside the image.
    std::optional<float> operator()(float x, float y) const {
        const float u = part_.left + x * c_ - y * s_, v = part_.top + x * s_ + y * c_;
        if (u < 0 || v < 0 || u >= static_cast<float>(image_.width()) ||
            v >= static_cast<float>(image_.height()))
            return {};
        const float level = image_.levelAt(u, v);
        return part_.isDark() ? -level : level;
    }

  private:
    const GreyImage& image_;
    const ScenePart& part_;
    const float c_, s_;
};

struct Direction {
    float x, y;
};
enum BoxSide { Left, Right, Above, Below };
constexpr std::array<Direction, 4> kSides = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};

// From one side of a box outwards, pixel by pixel: the median of the levels beside the middle half of it.
// Fewer where the image ends.
std::vector<float> levelsBeside(const LevelsThere& levels, const Region& box, Direction to, int reach) {
    const float halfWidth = 0.5f * static_cast<float>(box.width()),
                halfHeight = 0.5f * static_cast<float>(box.height());
    const float x = static_cast<float>(box.left) + halfWidth, y = static_cast<float>(box.top) + halfHeight;
    std::vector<float> result;
    for (int step = 0; step < reach; ++step) {
        const float further = static_cast<float>(step) + 0.5f;
        std::vector<float> row;
        for (float part = -0.5f; part <= 0.5f; part += 0.125f) {
            const float dx = to.x != 0 ? to.x * (halfWidth + further) : part * halfWidth;
            const float dy = to.y != 0 ? to.y * (halfHeight + further) : part * halfHeight;
            if (const std::optional<float> level = levels(x + dx, y + dy)) row.push_back(*level);
        }
        if (row.empty()) break;
        result.push_back(median(std::move(row)));
    }
    return result;
}

// Nearly the highest level in a box; nothing outside the image.
std::optional<float> levelOfShape(const LevelsThere& levels, const Region& box) {
    std::vector<float> inside;
    for (int y = box.top; y < box.bottom; ++y)
        for (int x = box.left; x < box.right; ++x)
            if (const auto level = levels(static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f))
                inside.push_back(*level);
    if (inside.empty()) return {};
    const auto high = inside.begin() + static_cast<std::ptrdiff_t>((inside.size() - 1) * 19 / 20);
    std::nth_element(inside.begin(), high, inside.end());
    return *high;
}

// To which sides of its box a shape goes on; to none where it does not stand out.
std::array<bool, 4> goesOn(const LevelsThere& levels, const Region& box, float height) {
    const std::optional<float> shape = levelOfShape(levels, box);
    if (!shape) return {};
    const int reach = std::max(2, static_cast<int>(kGoesOn * height));
    std::array<std::vector<float>, 4> beside;
    float ground = *shape;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        beside[side] = levelsBeside(levels, box, kSides[side], reach);
        for (const float level : beside[side]) ground = std::min(ground, level);
    }
    std::array<bool, 4> result{};
    int count = 0;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        result[side] = static_cast<int>(beside[side].size()) == reach &&
                       std::all_of(beside[side].begin(), beside[side].end(), [&](float level) {
                           return level - ground > kAsUnlike * (*shape - ground);
                       });
        count += result[side];
    }
    return count > kMostSides ? std::array<bool, 4>{} : result;
}

// Whether a character is a piece of something larger that its line ends at, or that few characters are of.
bool isPieceOfMore(const ScenePart& part, const GreyImage& image, const Shapes& shapes, std::size_t i) {
    const std::vector<Glyph>& glyphs = part.found.glyphs;
    const bool isFirst = i == 0 || glyphs[i - 1].line != glyphs[i].line;
    const bool isLast = i + 1 == glyphs.size() || glyphs[i + 1].line != glyphs[i].line;
    const bool isOfFew = shapes.together[i] <= kFew;
    if (!isFirst && !isLast && !isOfFew) return false;
    if (isSideOfFrame(part.found, shapes, i)) return true;
    const std::array<bool, 4> on = goesOn(LevelsThere(image, part), shapes.places[i], shapes.height);
    return (isFirst && on[Left]) || (isLast && on[Right]) || (on[Above] && on[Below]) ||
           (isOfFew && (on[Left] || on[Right] || on[Above] || on[Below]));
}

bool isOtherThing(const ScenePart& part, const GreyImage& image, const Shapes& shapes, std::size_t i) {
    const bool isAlone = shapes.together[i] == 1;
    return (isAlone && (shapes.places[i].height() > shapes.highest || isAtEdge(part, shapes.places[i]))) ||
           isPieceOfMore(part, image, shapes, i);
}

// Lines without characters go.
void keep(std::vector<Glyph> kept, Segmentation& found) {
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

}  // namespace

void leaveOutOtherThings(ScenePart& part, const GreyImage& image) {
    Segmentation& found = part.found;
    // What stood before the last piece of a thing may be another one.
    while (found.glyphs.size() > kFewestOthers) {
        const Shapes shapes = shapesOf(found);
        if (shapes.highest == 0) return;
        std::vector<Glyph> kept;
        for (std::size_t i = 0; i < found.glyphs.size(); ++i)
            if (!isOtherThing(part, image, shapes, i)) kept.push_back(found.glyphs[i]);
        if (kept.size() == found.glyphs.size()) return;
        keep(std::move(kept), found);
    }
}

}  // namespace dravik::engine
