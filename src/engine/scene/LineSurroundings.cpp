#include "engine/scene/LineSurroundings.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/UprightLine.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Lengths are in heights of the line unless another unit is said.

// Beyond an end so much is looked at, so often, where the contrast is at least this part of the line's own.
constexpr float kReach = 3.5f;
constexpr int kMostSteps = 3;
constexpr float kLeastContrast = 0.5f;
// A mark covers more than one in so many pixels there.
constexpr std::size_t kFewLevels = 800;
// The print odds of a longer line may be lower by so much, or are enough at this.
constexpr double kMuchLessLikely = 1, kLikelyEnough = 1.5;
// Beyond an end only what is hardly a half, a double or dirt, and reads as some character, is one; bars,
// which are narrower than this part of the height, are hardly higher than the line's own characters.
constexpr double kHardlyNone = 0.3, kReadable = 0.4;
constexpr float kBar = 0.35f, kHighestBar = 1.2f, kHighest = 1.6f;
// What is narrower than this, or lower than that part of the highest character and no letter or star, may be
// a mark or dirt; it belongs to what is so near.
constexpr float kNarrow = 0.25f, kLow = 0.7f, kNear = 0.4f;
// Words are apart by at least the first and by so many usual gaps of the line, and at most by the last.
constexpr float kLeastBlank = 0.8f, kUsualGaps = 1.6f, kMostBlank = 2.2f;

// The next line is searched so far away. In its rows the levels vary at least by this part of what they do in
// the line's own, from one place to those so far on both sides; the rest of this line ends within so much.
constexpr float kZone = 3.2f, kLeastVaried = 0.35f, kVariedWithin = 0.35f, kRest = 0.3f;
constexpr float kLeastRoom = 0.8f, kApart = 0.2f;
constexpr int kRowsOfLine = 16, kRowsOfContrast = 40;
// Between these heights are the next line with what hangs from it, and its characters; what is higher than
// the third has marks above or below.
constexpr float kLowest = 0.5f, kHighestRows = 2, kWithMarks = 1.25f;
constexpr float kLeastHeight = 0.6f, kMostHeight = 1.6f;
// Its characters are so many at least, and as a mean hardly halves, doubles or dirt.
constexpr std::size_t kFewestCharacters = 3;
constexpr double kMeanNone = 0.1;

// Levels of a picture in the directions of a line.
class AlongLine {
  public:
    AlongLine(const GreyImage& image, float angle)
        : image_(image), c_(std::cos(angle)), s_(std::sin(angle)) {}

    float operator()(float along, float across) const {
        return image_.levelAt(along * c_ - across * s_, along * s_ + across * c_);
    }
    // Whether the place is in the picture, and no nearer to its edges than this.
    bool isInside(float along, float across, float margin) const {
        const float x = along * c_ - across * s_, y = along * s_ + across * c_;
        return x >= margin && y >= 0 && x < static_cast<float>(image_.width()) - margin &&
               y < static_cast<float>(image_.height());
    }

  private:
    const GreyImage& image_;
    const float c_, s_;
};

// Between nearly the darkest and nearly the lightest levels.
float contrast(std::vector<float> levels) {
    if (levels.empty()) return 0;
    const auto few = static_cast<std::ptrdiff_t>(levels.size() / kFewLevels);
    std::nth_element(levels.begin(), levels.begin() + few, levels.end());
    const float low = levels[static_cast<std::size_t>(few)];
    std::nth_element(levels.begin(), levels.end() - 1 - few, levels.end());
    return *(levels.end() - 1 - few) - low;
}

// Of a line's rows, from one place along it to another.
float contrast(const AlongLine& levels, const TextLine& line, float from, float to) {
    const float step = std::max(1.0f, line.height() / kRowsOfContrast);
    std::vector<float> seen;
    for (float across = line.top; across < line.bottom; across += step)
        for (float along = from; along < to; along += step) seen.push_back(levels(along, across));
    return contrast(std::move(seen));
}

// Something beyond an end of a line, by how far it is from that.
struct Beyond {
    float from = 0, to = 0;  // pixels
    bool isCharacter = false, isMark = false;
};

// How far the print goes on, in pixels. What follows the line without a blank is a part of it, a word of its
// own has at least two characters, and marks are next to a character or between others.
float lengthOfPrint(std::vector<Beyond> shapes, float height, float usualGap) {
    std::sort(shapes.begin(), shapes.end(), [](const Beyond& a, const Beyond& b) { return a.from < b.from; });
    const float blank = std::max(kLeastBlank * height, kUsualGaps * usualGap);
    const float near = std::max(kNear * height, kUsualGaps * usualGap);
    float end = 0, print = 0;
    int inWord = 1;  // characters; the line's own last one is the first
    for (const Beyond& shape : shapes) {
        const float gap = shape.from - end;
        if (!shape.isCharacter || gap > kMostBlank * height) break;
        if (gap > blank) inWord = 0;
        const bool isNext = print == end && gap < near;
        end = shape.to;
        inWord += !shape.isMark;
        if (inWord > 1 ? !shape.isMark || isNext : shape.isMark && isNext) print = end;
    }
    return print;
}

int highestOf(const Segmentation& found) {
    int highest = 0;
    for (const Glyph& glyph : found.glyphs) highest = std::max(highest, found.place(glyph).height());
    return highest;
}

Beyond shapeOf(const SuggestedCharacter& seen, float height, float highest) {
    const float width = static_cast<float>(seen.place.width()),
                high = static_cast<float>(seen.place.height());
    const bool isBar = width < kBar * height;
    Beyond result;
    result.isCharacter = seen.noCharacter < kHardlyNone && seen.best().likelihood > kReadable &&
                         high < (isBar ? kHighestBar * highest : kHighest * std::max(highest, height));
    const char first = seen.best().character.front();
    const bool isLetter = (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z') ||
                          (first >= '0' && first <= '9') || first == '*';
    result.isMark = width < kNarrow * height || (high < kLow * highest && !isLetter);
    return result;
}

// Where the picture begins that shows a line.
float startOf(const TextLine& line, float height) {
    return line.left - (kBesideLine + kRoomAroundLine) * height;
}

// The line as far as its print goes on in what a longer one shows.
TextLine lineOfPrint(const SeenLine& seen, const SeenLine& longer) {
    const TextLine& line = seen.line;
    const float height = line.height(), beside = kBesideLine * height;
    const float highest = static_cast<float>(highestOf(seen.part.found));
    const float start = startOf(longer.line, height);
    std::vector<Beyond> before, behind;
    for (const SuggestedCharacter& one : readWithoutFont(longer.part.found)) {
        const float left = start + static_cast<float>(one.place.left),
                    right = start + static_cast<float>(one.place.right);
        Beyond shape = shapeOf(one, height, highest);
        if (left < line.left - beside) {
            shape.from = line.left - right;
            shape.to = line.left - left;
            before.push_back(shape);
        }
        if (right > line.right + beside) {
            shape.from = left - line.right;
            shape.to = right - line.right;
            behind.push_back(shape);
        }
    }
    const float gap = usualGap(seen.part.found);
    TextLine result = line;
    result.left -= lengthOfPrint(std::move(before), height, gap);
    result.right += lengthOfPrint(std::move(behind), height, gap);
    return result;
}

// Of a longer line what is on the print.
SeenLine within(SeenLine longer, const TextLine& print) {
    const float start = startOf(longer.line, print.height());
    std::erase_if(longer.part.found.glyphs, [&](const Glyph& glyph) {
        const Region place = longer.part.found.place(glyph);
        const float middle = start + 0.5f * static_cast<float>(place.left + place.right);
        return middle < print.left || middle > print.right;
    });
    longer.line = print;
    return longer;
}

bool haveSameEnds(const TextLine& a, const TextLine& b) {
    return a.left == b.left && a.right == b.right;
}

// Whether the longer line shows more than the other one, and is hardly less likely.
bool isBetter(const SeenLine& longer, const SeenLine& seen) {
    const Segmentation& found = longer.part.found;
    return found.glyphs.size() > seen.part.found.glyphs.size() && found.lines.size() == 1 &&
           longer.odds >= std::min(kLikelyEnough, seen.odds - kMuchLessLikely);
}

// How much the levels of a row vary along the line, for each row of so many of them.
std::vector<float> variations(const AlongLine& levels, const TextLine& line, float from, float to) {
    const float step = line.height() / kRowsOfLine, reach = kVariedWithin * line.height();
    std::vector<float> result;
    for (float across = from; across < to; across += step) {
        float sum = 0, count = 0;
        for (float along = line.left; along < line.right; along += std::max(1.0f, step)) {
            if (!levels.isInside(along, across, reach)) continue;
            sum += std::abs(levels(along, across) -
                            0.5f * (levels(along - reach, across) + levels(along + reach, across)));
            ++count;
        }
        result.push_back(count > 0 ? sum / count : 0);
    }
    return result;
}

// Means of five rows.
std::vector<float> smoothed(const std::vector<float>& rows) {
    std::vector<float> result;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        float sum = 0, count = 0;
        for (std::size_t k = i > 1 ? i - 2 : 0; k < std::min(rows.size(), i + 3); ++k, ++count)
            sum += rows[k];
        result.push_back(sum / count);
    }
    return result;
}

// The first rows that vary, after those that belong to what the rows begin with.
std::optional<std::pair<std::size_t, std::size_t>> firstRun(const std::vector<float>& rows, float least) {
    const auto isVaried = [&](float row) { return row >= least; };
    const auto rest = std::find_if_not(rows.begin(), rows.end(), isVaried);
    if (static_cast<float>(rest - rows.begin()) > kRest * kRowsOfLine) return {};
    const auto first = std::find_if(rest, rows.end(), isVaried);
    const auto last = std::find_if_not(first, rows.end(), isVaried);
    if (last == rows.end()) return {};
    return std::pair(static_cast<std::size_t>(first - rows.begin()),
                     static_cast<std::size_t>(last - rows.begin()));
}

// The rows from the highest of its characters to the lowest.
TextLine reachOf(const SeenLine& seen) {
    const ScenePart& part = seen.part;
    TextLine result = seen.line;
    const float start = part.top * std::cos(result.angle) - part.left * std::sin(result.angle);
    result.top = 1e9f;
    result.bottom = -1e9f;
    for (const Glyph& glyph : part.found.glyphs) {
        const Region place = part.found.place(glyph);
        result.top = std::min(result.top, start + static_cast<float>(place.top));
        result.bottom = std::max(result.bottom, start + static_cast<float>(place.bottom));
    }
    return result;
}

bool isPrintOfHeight(const SeenLine& seen, float height) {
    const Segmentation& found = seen.part.found;
    const float typical = typicalHeight(found) * found.ink.scale;
    if (!seen.isClear() || found.glyphs.size() < kFewestCharacters || typical < kLeastHeight * height ||
        typical > kMostHeight * height)
        return false;
    double none = 0;
    for (const SuggestedCharacter& one : readWithoutFont(found)) none += one.noCharacter;
    return none <= kMeanNone * static_cast<double>(found.glyphs.size());
}

}  // namespace

void extend(SeenLine& seen, const LineSight& sight) {
    const AlongLine levels(sight.image(), seen.line.angle);
    const float height = seen.line.height(), reach = kReach * height, beside = kBesideLine * height;
    for (int step = 0; step < kMostSteps; ++step) {
        const TextLine& line = seen.line;
        const float least = kLeastContrast * contrast(levels, line, line.left, line.right);
        TextLine longer = line;
        if (contrast(levels, line, line.left - reach, line.left - beside) >= least) longer.left -= reach;
        if (contrast(levels, line, line.right + beside, line.right + reach) >= least) longer.right += reach;
        if (haveSameEnds(longer, line)) return;
        SeenLine more = sight.look(longer, height);
        if (more.part.found.lines.size() != 1) return;
        const TextLine print = lineOfPrint(seen, more);
        if (haveSameEnds(print, line)) return;
        SeenLine extended = sight.look(print, height);
        if (extended.part.found.lines.size() > 1) extended = within(std::move(more), print);
        if (!isBetter(extended, seen)) return;
        seen = std::move(extended);
    }
}

std::optional<SeenLine> nextLine(const SeenLine& seen, Side side, std::span<const SeenLine> others,
                                 const LineSight& sight) {
    const TextLine line = reachOf(seen);
    const bool isBelow = side == Side::Below;
    const float height = seen.line.height();
    float room = kZone * height;
    for (const SeenLine& other : others) {
        const float further = (isBelow ? 1.0f : -1.0f) * (other.line.middle() - seen.line.middle());
        if (!isOverOrUnder(seen.line, other.line) || further < 0.5f * height) continue;
        const float gap = isBelow ? other.line.top - line.bottom : line.top - other.line.bottom;
        room = std::min(room, gap - kApart * height);
    }
    if (room < kLeastRoom * height) return {};
    const AlongLine levels(sight.image(), seen.line.angle);
    std::vector<float> rows = isBelow ? variations(levels, seen.line, line.bottom, line.bottom + room)
                                      : variations(levels, seen.line, line.top - room, line.top);
    if (!isBelow) std::reverse(rows.begin(), rows.end());
    const std::vector<float> own = variations(levels, seen.line, seen.line.top, seen.line.bottom);
    const float usual = std::accumulate(own.begin(), own.end(), 0.0f) / static_cast<float>(own.size());
    const auto run = firstRun(smoothed(rows), kLeastVaried * usual);
    if (!run) return {};
    const float step = height / kRowsOfLine, near = static_cast<float>(run->first) * step,
                far = static_cast<float>(run->second) * step, high = far - near;
    if (high < kLowest * height || high > kHighestRows * height) return {};
    TextLine next = seen.line;
    next.top = isBelow ? line.bottom + near : line.top - far;
    next.bottom = isBelow ? line.bottom + far : line.top - near;
    if (high > kWithMarks * height) {
        next.top += 0.5f * (high - height);
        next.bottom -= 0.5f * (high - height);
    }
    SeenLine found = sight.look(next, height);
    if (!isPrintOfHeight(found, height)) return {};
    return found;
}

}  // namespace dravik::engine
