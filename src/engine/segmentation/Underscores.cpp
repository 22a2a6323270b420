#include "engine/segmentation/Underscores.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace dravik::engine {
namespace {

// In heights of capitals: its length, its thickness, where its middle is below the baseline, and the white
// above and below.
constexpr float kShortest = 0.42f, kLongest = 1.1f, kThickest = 0.25f, kHighest = 0.02f, kLowest = 0.42f,
                kClear = 0.28f;
// How far its ink rises above that around it, 128 being the threshold of the print, and how many times.
constexpr float kFaintest = 36, kLeastTimes = 2.2f;
constexpr float kBelow = 0.75f;  // as far as that below the baseline nothing else is
// Means reach so far to both sides, those that find a place and those that find the ends.
constexpr float kWindow = 0.15f, kStep = 0.06f;
// Beyond the ends of a line it is looked for so far, in heights of capitals.
constexpr float kBeyond = 1.8f;
constexpr float kLeastCapHeight = 14;  // ink pixels

// What std::floor() gives, which takes a call where a processor need not have an instruction for it.
int wholeBelow(float value) {
    const int whole = static_cast<int>(value);
    return static_cast<float>(whole) > value ? whole - 1 : whole;
}

// The ink along a line of print.
class LineInk {
  public:
    LineInk(const InkImage& ink, const Frame& frame) : ink_(ink), frame_(frame) {}

    // Between two places along the line, at one across.
    float mean(float from, float to, float across) const {
        float sum = 0, count = 0;
        for (float along = from; along < to; ++along, ++count) sum += at(along, across);
        return count > 0 ? sum / count : 0;
    }

  private:
    float at(float along, float across) const {
        const int x = wholeBelow(frame_.x(along, across)), y = wholeBelow(frame_.y(along, across));
        const bool inside = x >= 0 && y >= 0 && x < ink_.width && y < ink_.height;
        return inside ? static_cast<float>(ink_.at(x, y)) : 0.0f;
    }
    const InkImage& ink_;
    const Frame& frame_;
};

// The pixels of at least that ink in a box of the frame.
Piece inkWithin(const Box& box, float least, const InkImage& ink, const Frame& frame) {
    Piece piece;
    const float ys[] = {frame.y(box.left, box.top), frame.y(box.right, box.top),
                        frame.y(box.left, box.bottom), frame.y(box.right, box.bottom)};
    const int top = std::max(0, static_cast<int>(*std::min_element(ys, ys + 4)));
    const int bottom = std::min(ink.height - 1, static_cast<int>(*std::max_element(ys, ys + 4)));
    for (int y = top; y <= bottom; ++y)
        for (int x = std::max(0, static_cast<int>(box.left - 0.5f * box.width())); x < ink.width; ++x) {
            const float u = static_cast<float>(x) + 0.5f, v = static_cast<float>(y) + 0.5f;
            const float along = frame.along(u, v), across = frame.across(u, v);
            if (along > box.right + box.width()) break;
            if (along < box.left || along > box.right || across < box.top || across > box.bottom ||
                static_cast<float>(ink.at(x, y)) < least)
                continue;
            ++piece.area;
            if (!piece.runs.empty() && piece.runs.back().y == y && piece.runs.back().x1 == x)
                ++piece.runs.back().x1;
            else
                piece.runs.push_back({x, x + 1, y});
        }
    return piece;
}

// The underscore below the place `middle` along the line, if there is one.
std::optional<Piece> underscoreAt(float middle, const LineMetrics& line, const InkImage& ink,
                                  const Frame& frame) {
    const float cap = line.capHeight;
    const LineInk along(ink, frame);
    const auto near = [&](float place, float across, float reach) {
        return along.mean(place - reach * cap, place + reach * cap, across);
    };
    float across = 0, most = 0;
    for (float y = line.baseline + kHighest * cap; y < line.baseline + kLowest * cap; y += 0.5f)
        if (const float here = near(middle, y, kWindow); here > most) {
            most = here;
            across = y;
        }
    if (most < kFaintest) return {};
    // Where there is noise or texture, it is as strong elsewhere in the gap.
    float around = 0;
    for (float y = line.baseline - cap; y < line.baseline + kBelow * cap && most > kLeastTimes * around;
         y += 1)
        if (std::abs(y - across) >= kClear * cap) around = std::max(around, near(middle, y, kWindow));
    if (most - around < kFaintest || most < kLeastTimes * around) return {};
    const float least = 0.5f * (most + around);
    Box box{middle, across, middle, across};
    while (box.width() < 2 * kLongest * cap && near(box.left, across, kStep) >= least) --box.left;
    while (box.width() < 2 * kLongest * cap && near(box.right, across, kStep) >= least) ++box.right;
    if (box.width() < kShortest * cap || box.width() > kLongest * cap) return {};
    while (box.top > across - kClear * cap && along.mean(box.left, box.right, box.top) >= least)
        box.top -= 0.5f;
    while (box.bottom < across + kClear * cap && along.mean(box.left, box.right, box.bottom) >= least)
        box.bottom += 0.5f;
    if (box.height() > kThickest * cap) return {};
    Piece piece = inkWithin(box, 0.8f * least, ink, frame);
    if (piece.runs.empty()) return {};
    piece.measure(frame);
    return piece;
}

// Whether the print and the white around it are in the image.
bool isInside(const Box& box, float room, const InkImage& ink, const Frame& frame) {
    for (const float along : {box.left - room, box.right + room})
        for (const float across : {box.top - room, box.bottom + room}) {
            const float x = frame.x(along, across), y = frame.y(along, across);
            if (x < 0 || y < 0 || x >= static_cast<float>(ink.width) || y >= static_cast<float>(ink.height))
                return false;
        }
    return true;
}

bool isNear(const Box& a, const Box& b, float room) {
    return a.left - room < b.right && b.left < a.right + room && a.top - room < b.bottom &&
           b.top < a.bottom + room;
}

std::vector<Piece> underscores(const LinePieces& line, const InkImage& ink, const Frame& frame) {
    const float cap = line.metrics.capHeight;
    std::vector<Piece> found;
    if (cap < kLeastCapHeight || line.pieces.empty()) return found;
    const auto look = [&](float left, float right) {
        for (float middle = left + 0.5f * kShortest * cap; middle < right - 0.5f * kShortest * cap;
             middle += 0.2f * cap) {
            std::optional<Piece> one = underscoreAt(middle, line.metrics, ink, frame);
            if (!one || one->box.left < left || one->box.right > right) continue;
            middle = std::max(middle, one->box.right);
            left = one->box.right;
            found.push_back(std::move(*one));
        }
    };
    float edge = line.pieces.front().box.left - kBeyond * cap;
    for (const Piece& piece : line.pieces) {
        look(edge, piece.box.left);
        edge = std::max(edge, piece.box.right);
    }
    look(edge, edge + kBeyond * cap);
    return found;
}

}  // namespace

void addUnderscores(std::vector<LinePieces>& lines, const InkImage& ink, const Frame& frame) {
    for (LinePieces& line : lines) {
        const float room = 0.04f * line.metrics.capHeight;
        for (Piece& one : underscores(line, ink, frame)) {
            const auto meets = [&](const LinePieces& other) {
                return std::any_of(other.pieces.begin(), other.pieces.end(),
                                   [&](const Piece& piece) { return isNear(one.box, piece.box, room); });
            };
            if (isInside(one.box, 3 * room, ink, frame) && std::none_of(lines.begin(), lines.end(), meets))
                line.pieces.push_back(std::move(one));
        }
        std::sort(line.pieces.begin(), line.pieces.end(),
                  [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
    }
}

}  // namespace dravik::engine
