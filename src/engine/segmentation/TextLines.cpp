#include "engine/segmentation/TextLines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

namespace dravik::engine {
namespace {

// A line that is being collected: its recent members tell where the next one is to be expected.
struct OpenLine {
    std::vector<std::size_t> members;
    float top = 0, bottom = 0;

    void add(std::size_t member, const Box& box) {
        const float share = members.empty() ? 1.0f : 0.3f;
        top += share * (box.top - top);
        bottom += share * (box.bottom - bottom);
        members.push_back(member);
    }
    // Shared height as a part of the smaller one's.
    float overlap(float otherTop, float otherBottom) const {
        const float shared = std::min(bottom, otherBottom) - std::max(top, otherTop);
        return shared / std::max(1.0f, std::min(bottom - top, otherBottom - otherTop));
    }
};

// Of a character, or of several that touch: many are no higher than one and have room between their strokes.
bool isCharacterSized(const Piece& piece, float height) {
    const Box& box = piece.box;
    if (box.height() < 0.55f * height || box.height() > 2.2f * height) return false;
    const float filled = static_cast<float>(piece.area) / (box.width() * box.height());
    return box.width() <= 8 * height ||
           (box.width() <= 40 * height && box.height() < 1.5f * height && filled > 0.15f && filled < 0.7f);
}

std::vector<OpenLine> collected(const std::vector<Piece>& pieces, float height) {
    std::vector<OpenLine> lines;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Box& box = pieces[i].box;
        if (!isCharacterSized(pieces[i], height)) continue;
        OpenLine* best = nullptr;
        float most = 0.4f;
        for (OpenLine& line : lines) {
            const float shared = line.overlap(box.top, box.bottom);
            if (shared > most) {
                most = shared;
                best = &line;
            }
        }
        if (!best) best = &lines.emplace_back();
        best->add(i, box);
    }
    return lines;
}

// How often runs of each length occur.
class StrokeWidths {
  public:
    void add(const Piece& piece) {
        if (all_ >= kEnough) return;
        for (const Run& run : piece.runs) {
            const std::size_t length = static_cast<std::size_t>(run.x1 - run.x0);
            if (length >= counts_.size()) counts_.resize(length + 1);
            ++counts_[length];
        }
        all_ += piece.runs.size();
    }
    // 0 of none.
    float median() const {
        std::size_t length = 0;
        for (std::size_t below = 0; length < counts_.size(); ++length)
            if ((below += counts_[length]) > all_ / 2) break;
        return all_ ? static_cast<float>(length) : 0;
    }

  private:
    static constexpr std::size_t kEnough = 100'000;
    std::vector<std::uint32_t> counts_;
    std::size_t all_ = 0;
};

float middleOf(std::vector<float> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Lines that turn out to cover the same band are one: a first character that hangs low or stands high may
// have begun one of its own.
void mergeSameLines(std::vector<OpenLine>& lines, const std::vector<Piece>& pieces) {
    for (OpenLine& line : lines) {
        std::vector<float> tops, bottoms;
        for (const std::size_t member : line.members) {
            tops.push_back(pieces[member].box.top);
            bottoms.push_back(pieces[member].box.bottom);
        }
        line.top = middleOf(std::move(tops));
        line.bottom = middleOf(std::move(bottoms));
    }
    std::sort(lines.begin(), lines.end(),
              [](const OpenLine& a, const OpenLine& b) { return a.top + a.bottom < b.top + b.bottom; });
    std::vector<OpenLine> result;
    for (OpenLine& line : lines) {
        if (result.empty() || result.back().overlap(line.top, line.bottom) < 0.5f) {
            result.push_back(std::move(line));
            continue;
        }
        OpenLine& same = result.back();
        if (line.members.size() > same.members.size()) {
            same.top = line.top;
            same.bottom = line.bottom;
        }
        same.members.insert(same.members.end(), line.members.begin(), line.members.end());
        std::sort(same.members.begin(), same.members.end());
    }
    lines = std::move(result);
}

// Characters of two lines that touch, in heights of characters: together they are at least so high and at
// most so wide, reach so far into both lines and no further than the fourth beyond them.
constexpr float kOverTwoLines = 1.6f, kMostWideTouching = 2, kIntoLine = 0.5f, kBeyondLine = 0.4f;
// They are cut between the lines or so far within either, into parts at least so high.
constexpr float kWithinLine = 0.1f, kLeastPart = 0.55f;
// At most so much ink, as a part of that of the widest row, is where they touch.
constexpr float kNarrowTouch = 0.4f;

// Where it is narrowest between a line and the next one; nothing where it is hardly narrower than elsewhere.
std::optional<float> narrowPlace(const Piece& piece, const Frame& frame, float from, float to) {
    std::vector<int> ink(static_cast<std::size_t>(std::ceil(piece.box.height())) + 1);
    for (const Run& run : piece.runs) {
        const float across =
            frame.across(0.5f * static_cast<float>(run.x0 + run.x1), static_cast<float>(run.y) + 0.5f);
        const float row = std::clamp(across - piece.box.top, 0.0f, static_cast<float>(ink.size() - 1));
        ink[static_cast<std::size_t>(row)] += run.x1 - run.x0;
    }
    const int most = *std::max_element(ink.begin(), ink.end());
    std::optional<float> best;
    int least = static_cast<int>(kNarrowTouch * static_cast<float>(most));
    const float middle = 0.5f * (from + to);
    for (std::size_t i = 0; i < ink.size(); ++i) {
        const float across = piece.box.top + static_cast<float>(i) + 0.5f;
        if (across < from || across > to || ink[i] > least) continue;
        if (best && ink[i] == least && std::abs(*best - middle) <= std::abs(across - middle)) continue;
        least = ink[i];
        best = across;
    }
    return best;
}

// Characters that touch others of the line above or below would belong to no line; returns whether any was
// cut from them. The pieces must be sorted from the left.
bool cutBetweenLines(std::vector<Piece>& pieces, const Frame& frame, float height) {
    const auto isOver = [height](const Piece& piece) {
        return piece.box.height() > kOverTwoLines * height && piece.box.width() < kMostWideTouching * height;
    };
    const auto isAsHigh = [height](const Piece& part) {
        return part.area > 0 && part.box.height() > kLeastPart * height &&
               part.box.height() < kOverTwoLines * height;
    };
    if (std::none_of(pieces.begin(), pieces.end(), isOver)) return false;
    std::vector<OpenLine> lines = collected(pieces, height);
    for (OpenLine& line : lines)
        std::erase_if(line.members, [&](std::size_t member) { return isOver(pieces[member]); });
    std::erase_if(lines, [](const OpenLine& line) { return line.members.size() < 2; });
    const std::size_t over = static_cast<std::size_t>(std::count_if(pieces.begin(), pieces.end(), isOver));
    std::size_t within = 0;
    for (const OpenLine& line : lines) within += line.members.size();
    // More such pieces are no characters that touch, but the characters, and the lines are pieces of them.
    if (3 * over > within) return false;
    mergeSameLines(lines, pieces);
    std::vector<Piece> parts;
    for (Piece& piece : pieces) {
        if (!isOver(piece)) continue;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const OpenLine &above = lines[i - 1], &below = lines[i];
            const Box& box = piece.box;
            if (box.top > above.bottom - kIntoLine * height || box.bottom < below.top + kIntoLine * height ||
                box.top < above.top - kBeyondLine * height ||
                box.bottom > below.bottom + kBeyondLine * height)
                continue;
            const std::optional<float> place = narrowPlace(piece, frame, above.bottom - kWithinLine * height,
                                                           below.top + kWithinLine * height);
            if (!place) continue;
            auto [upper, lower] = cutAcross(piece, frame, *place);
            if (!isAsHigh(upper) || !isAsHigh(lower)) continue;
            piece = std::move(upper);
            parts.push_back(std::move(lower));
            break;
        }
    }
    pieces.insert(pieces.end(), std::move_iterator(parts.begin()), std::move_iterator(parts.end()));
    return !parts.empty();
}

}  // namespace

float usualHeight(std::span<const Piece> pieces) {
    std::vector<std::pair<float, float>> heights;
    float total = 0;
    for (const Piece& piece : pieces) {
        const float weight = piece.box.height() + std::min(piece.box.width(), piece.box.height());
        heights.emplace_back(piece.box.height(), weight);
        total += weight;
    }
    std::sort(heights.begin(), heights.end());
    float below = 0;
    for (const auto& [height, weight] : heights) {
        below += weight;
        if (below >= 0.6f * total) return height;
    }
    return 0;
}

std::vector<LinePieces> textLines(std::vector<Piece> pieces, const Frame& frame, float height) {
    const auto fromLeft = [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; };
    std::sort(pieces.begin(), pieces.end(), fromLeft);
    if (cutBetweenLines(pieces, frame, height)) std::sort(pieces.begin(), pieces.end(), fromLeft);
    std::vector<OpenLine> open = collected(pieces, height);
    std::vector<float> areas;
    for (const OpenLine& line : open)
        for (const std::size_t member : line.members)
            areas.push_back(static_cast<float>(pieces[member].area));
    if (areas.empty()) return {};
    const auto middle = areas.begin() + static_cast<std::ptrdiff_t>(areas.size() / 2);
    std::nth_element(areas.begin(), middle, areas.end());
    std::erase_if(open, [&](const OpenLine& line) {
        return line.members.size() == 1 &&
               static_cast<float>(pieces[line.members.front()].area) < 0.35f * *middle;
    });

    mergeSameLines(open, pieces);
    std::vector<LinePieces> lines;
    std::vector<bool> placed(pieces.size());
    StrokeWidths strokes;
    for (const OpenLine& line : open) {
        std::vector<Box> boxes;
        LinePieces& result = lines.emplace_back();
        result.pieces.reserve(line.members.size());
        for (const std::size_t member : line.members) {
            boxes.push_back(pieces[member].box);
            placed[member] = true;
            strokes.add(pieces[member]);
            result.pieces.push_back(std::move(pieces[member]));
        }
        result.metrics = measureLine(boxes, height);
    }
    const float stroke = strokes.median();
    if (stroke <= 0) return {};
    const float leastArea = std::max(3.0f, 0.15f * stroke * stroke);

    std::sort(lines.begin(), lines.end(), [](const LinePieces& a, const LinePieces& b) {
        return a.metrics.baseline < b.metrics.baseline;
    });
    std::vector<std::pair<float, float>> extents;
    for (const LinePieces& line : lines) {
        float right = 0;
        for (const Piece& piece : line.pieces) right = std::max(right, piece.box.right);
        extents.emplace_back(line.pieces.front().box.left, right);
    }
    std::vector<std::size_t> small;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (!placed[i] && static_cast<float>(pieces[i].area) >= leastArea &&
            pieces[i].box.height() <= 1.3f * height && pieces[i].box.width() <= 2 * height)
            small.push_back(i);
    // Twice, to either side: a mark at the end of a line is in reach once the marks before it belong to the
    // line.
    for (const bool backwards : {false, true}) {
        if (backwards) std::reverse(small.begin(), small.end());
        for (const std::size_t i : small) {
            if (placed[i]) continue;
            const Box& box = pieces[i].box;
            std::size_t best = lines.size();
            float nearest = 1e9f;
            for (std::size_t l = 0; l < lines.size(); ++l) {
                const LineMetrics& metrics = lines[l].metrics;
                const float above = metrics.baseline - box.middleY();
                if (above < -0.45f * metrics.capHeight || above > 1.35f * metrics.capHeight) continue;
                if (box.right < extents[l].first - 2 * height || box.left > extents[l].second + 2 * height)
                    continue;
                const float distance = std::abs(above - 0.5f * metrics.capHeight);
                if (distance < nearest) {
                    nearest = distance;
                    best = l;
                }
            }
            if (best == lines.size()) continue;
            extents[best] = {std::min(extents[best].first, box.left),
                             std::max(extents[best].second, box.right)};
            placed[i] = true;
            lines[best].pieces.push_back(std::move(pieces[i]));
        }
    }
    for (LinePieces& line : lines)
        std::sort(line.pieces.begin(), line.pieces.end(),
                  [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
    return lines;
}

}  // namespace dravik::engine
