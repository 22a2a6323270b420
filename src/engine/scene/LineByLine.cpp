#include "engine/scene/LineByLine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/UprightLine.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Of lines looked at alone: what is less likely is none where another is clear; what is found between and
// beside the lines must be this likely.
constexpr double kNoLine = -0.4, kClearLine = 1.5;
// A line that is less likely than this is cut where its characters are furthest apart, or from its ends, at
// least so far, in heights, as often as that makes it likelier by so much.
constexpr float kWideGap = 0.6f;
constexpr double kDoubtfulLine = 2.2, kBetterCut = 0.3;
constexpr int kMostCuts = 3;
// The contrast that another line has at least, as a part of that of the line beside it.
constexpr float kLeastContrast = 0.5f;
// Of the room between lines what is theirs, on each side, in heights.
constexpr float kClear = 0.45f;
// Between two lines there may be another one when they are so far apart, in heights.
constexpr float kLeastRoom = 1.55f, kMostRoom = 4;

// Between nearly the darkest and nearly the lightest pixels.
float contrast(const GreyImage& picture) {
    std::array<int, 256> counts{};
    for (int y = 0; y < picture.height(); ++y)
        for (const std::uint8_t level : picture.row(y)) ++counts[level];
    const int few = picture.width() * picture.height() / 100;
    std::size_t low = 0, high = 255;
    for (int sum = counts[low]; sum <= few && low < 255; sum += counts[low]) ++low;
    for (int sum = counts[high]; sum <= few && high > low; sum += counts[high]) --high;
    return static_cast<float>(high - low);
}

// Looks at lines one by one, and at the room between them.
class LineByLine {
  public:
    LineByLine(const GreyImage& image, std::span<const TextLine> lines, const PrintSettings& print,
               const std::stop_token& stop)
        : image_(image), lines_(lines), print_(print), stop_(stop) {
        for (const TextLine& line : lines) seen_.push_back(look(line, line.height()));
        const bool clear = std::any_of(seen_.begin(), seen_.end(), isClear);
        std::erase_if(seen_, [&](const SeenLine& one) {
            return one.part.found.glyphs.empty() || (clear && one.part.found.glyphs.size() < 2) ||
                   one.part.found.likeness < (clear ? kNoLine : kPerhapsPrint);
        });
        lookBetween();
    }

    Scene scene() && {
        Scene scene;
        int number = 0;
        for (SeenLine& one : seen_) {
            one.part.firstLine = number;
            number += static_cast<int>(one.part.found.lines.size());
            scene.parts.push_back(std::move(one.part));
        }
        tellOfNeighbours(scene);
        return scene;
    }

  private:
    struct SeenLine {
        TextLine line;
        ScenePart part;
    };

    static bool isClear(const SeenLine& one) {
        return one.part.found.glyphs.size() > 1 && one.part.found.likeness > kClearLine;
    }

    SeenLine lookOnce(const TextLine& line, float height) const {
        SeenLine result{line, uprightLine(image_, line, height, lines_)};
        result.part.found = segment(*result.part.picture, takeWholeCharacters, stop_, print_);
        return result;
    }

    // What stands at the end of a line, far from the rest, may be a part of a code or of a hole.
    SeenLine look(const TextLine& line, float height) const {
        SeenLine result = lookOnce(line, height);
        for (int cuts = 0; cuts < kMostCuts; ++cuts) {
            const Segmentation& found = result.part.found;
            if (found.glyphs.size() < 3 || found.lines.size() > 1 || found.likeness > kDoubtfulLine) break;
            const float room = kRoomAroundLine * height + kBesideLine * height;
            float widest = kWideGap * height, left = 0, right = 0;
            float end = room;
            const auto to = [&](float next) {
                if (const float gap = next - end; gap > widest) {
                    widest = gap;
                    left = end;
                    right = next;
                }
            };
            for (const Glyph& glyph : found.glyphs) {
                const Region place = found.place(glyph);
                to(static_cast<float>(place.left));
                end = std::max(end, static_cast<float>(place.right));
            }
            to(room + result.line.right - result.line.left);
            if (right == 0) break;
            TextLine shorter = result.line;
            const float from = shorter.left - room;
            if (from + left - shorter.left > shorter.right - from - right)
                shorter.right = from + left;
            else
                shorter.left = from + right;
            SeenLine cut = lookOnce(shorter, height);
            if (cut.part.found.glyphs.empty() ||
                cut.part.found.likeness < result.part.found.likeness + kBetterCut)
                break;
            result = std::move(cut);
        }
        return result;
    }

    // Between lines that were found there are sometimes some that were not.
    void lookBetween() {
        std::vector<SeenLine> more;
        for (std::size_t i = 0; i < seen_.size(); ++i) {
            const TextLine& line = seen_[i].line;
            if (!isClear(seen_[i])) continue;
            const float height = line.height();
            const TextLine* below = nullptr;
            for (const SeenLine& one : seen_) {
                const TextLine& other = one.line;
                if (isOverOrUnder(line, other) && other.top > line.bottom &&
                    (!below || other.top < below->top))
                    below = &other;
            }
            if (!below || below->top - line.bottom < kLeastRoom * height ||
                below->top - line.bottom > kMostRoom * height)
                continue;
            TextLine between = line;
            between.top = line.bottom + kClear * height;
            between.bottom = below->top - kClear * height;
            between.left = std::min(line.left, below->left);
            between.right = std::max(line.right, below->right);
            SeenLine found{between, uprightLine(image_, between, height, lines_)};
            if (contrast(*found.part.picture) < kLeastContrast * contrast(*seen_[i].part.picture)) continue;
            found.part.found = segment(*found.part.picture, takeWholeCharacters, stop_, print_);
            const float typical = typicalHeight(found.part.found) * found.part.found.ink.scale;
            if (isClear(found) && typical > 0.6f * height && typical < 1.6f * height)
                more.push_back(std::move(found));
        }
        for (SeenLine& one : more) seen_.push_back(std::move(one));
        sortInReadingOrder(seen_, &SeenLine::line);
    }

    const GreyImage& image_;
    const std::span<const TextLine> lines_;
    const PrintSettings& print_;
    const std::stop_token& stop_;
    std::vector<SeenLine> seen_;
};

}  // namespace

Scene lineByLine(const GreyImage& image, std::span<const TextLine> lines, const PrintSettings& print,
                 const std::stop_token& stop) {
    return LineByLine(image, lines, print, stop).scene();
}

}  // namespace dravik::engine
