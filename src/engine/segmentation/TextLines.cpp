#include "engine/segmentation/TextLines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace dravik::engine {
namespace {

constexpr float kSteepest = 0.085f;
constexpr std::size_t kMostSlopePoints = 12'000;
constexpr std::size_t kMostMeasured = 300;

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

// Mean of the values within `reach` of the densest place; `count` tells how many there are.
float densest(std::span<const float> sorted, float reach, std::size_t& count) {
    std::size_t first = 0, best = 0;
    count = 0;
    for (std::size_t last = 0; last < sorted.size(); ++last) {
        while (sorted[last] - sorted[first] > reach) ++first;
        if (last - first + 1 > count) {
            count = last - first + 1;
            best = first;
        }
    }
    float sum = 0;
    for (std::size_t i = best; i < best + count; ++i) sum += sorted[i];
    return count ? sum / static_cast<float>(count) : 0;
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

float printSlope(std::span<const Piece> pieces, float height) {
    std::vector<const Piece*> characters;
    std::size_t runs = 0;
    float left = 1e9f, right = -1e9f, top = 1e9f, bottom = -1e9f;
    for (const Piece& piece : pieces) {
        // Marks stand at any height and say nothing of the line.
        if (piece.box.height() < 0.5f * height || piece.box.height() > 2.2f * height ||
            piece.box.width() > 8 * height)
            continue;
        characters.push_back(&piece);
        runs += piece.runs.size();
        left = std::min(left, piece.box.left);
        right = std::max(right, piece.box.right);
        top = std::min(top, piece.box.top);
        bottom = std::max(bottom, piece.box.bottom);
    }
    if (characters.size() < 3 || right - left < 3 * height) return 0;
    const std::size_t stride = std::max<std::size_t>(1, runs / kMostSlopePoints);
    const float bin = std::max(1.0f, height / 16);
    const float origin = top - kSteepest * std::max(std::abs(left), std::abs(right)) - bin;
    const float reach = bottom - top + 2 * kSteepest * std::max(std::abs(left), std::abs(right)) + 4 * bin;
    std::vector<float> profile(static_cast<std::size_t>(reach / bin) + 2);

    const auto sharpness = [&](float slope) {
        std::fill(profile.begin(), profile.end(), 0.0f);
        std::size_t next = 0;
        for (const Piece* piece : characters) {
            for (; next < piece->runs.size(); next += stride) {
                const Run& run = piece->runs[next];
                const float x = 0.5f * static_cast<float>(run.x0 + run.x1);
                const float place = (static_cast<float>(run.y) - slope * x - origin) / bin;
                const std::size_t cell = static_cast<std::size_t>(std::max(0.0f, place));
                const float part = place - static_cast<float>(cell);
                const float weight = static_cast<float>(run.x1 - run.x0);
                if (cell + 1 >= profile.size()) continue;
                profile[cell] += weight * (1 - part);
                profile[cell + 1] += weight * part;
            }
            next -= piece->runs.size();
        }
        double sum = 0;
        for (std::size_t i = 1; i < profile.size(); ++i) {
            const double step = static_cast<double>(profile[i] - profile[i - 1]);
            sum += step * step;
        }
        // Steep slopes are rare, and need the clearer evidence.
        return sum * std::exp(-4.0 * static_cast<double>(std::abs(slope)));
    };
    float best = 0;
    double most = sharpness(0);
    const auto search = [&](float from, float to, float step) {
        for (float slope = from; slope <= to; slope += step)
            if (const double value = sharpness(slope); value > most) {
                most = value;
                best = slope;
            }
    };
    const float step = bin / (right - left);
    search(-kSteepest, kSteepest, step);
    search(best - step, best + step, step / 4);
    return best;
}

float printSlant(std::span<const Piece> pieces, float slope, float height) {
    constexpr float kMostSlant = 0.34f, kStep = 0.02f;
    constexpr int kSteps = static_cast<int>(2 * kMostSlant / kStep) + 1, kUpright = kSteps / 2;
    std::vector<const Piece*> upright;
    std::size_t runs = 0;
    for (const Piece& piece : pieces)
        if (piece.box.height() > 0.6f * height && piece.box.height() < 1.8f * height &&
            piece.box.width() < 1.6f * height && runs < kMostSlopePoints) {
            upright.push_back(&piece);
            runs += piece.runs.size();
        }
    if (upright.size() < 3) return 0;
    // Edges of upright strokes fall together where the shear undoes the slant.
    std::vector<float> columns;
    double most = 0;
    float best = 0;
    for (int step = 0; step < kSteps; ++step) {
        const float slant = static_cast<float>(step - kUpright) * kStep;
        double sum = 0;
        for (const Piece* piece : upright) {
            const float middle = piece->box.middleY(),
                        left = piece->box.left - kMostSlant * piece->box.height() - 1;
            columns.assign(
                static_cast<std::size_t>(piece->box.width() + 2 * kMostSlant * piece->box.height()) + 4, 0);
            for (const Run& run : piece->runs) {
                const float y = static_cast<float>(run.y) + 0.5f;
                const float shift = slope * y + slant * (y - middle) - left;
                for (const int x : {run.x0, run.x1}) {
                    const float place = std::max(0.0f, static_cast<float>(x) + shift);
                    const std::size_t column = static_cast<std::size_t>(place);
                    if (column + 1 >= columns.size()) continue;
                    const float part = place - static_cast<float>(column);
                    columns[column] += 1 - part;
                    columns[column + 1] += part;
                }
            }
            for (const float count : columns) sum += static_cast<double>(count * count);
        }
        sum *= std::exp(-1.5 * static_cast<double>(std::abs(slant)));
        if (sum > most) {
            most = sum;
            best = slant;
        }
    }
    return std::abs(best) < 0.03f ? 0 : best;
}

LineMetrics measureLine(std::span<const Box> boxes, float height) {
    LineMetrics metrics;
    if (boxes.empty()) return metrics;
    std::vector<float> bottoms;
    const std::size_t stride = 1 + boxes.size() / kMostMeasured;
    for (std::size_t i = 0; i < boxes.size(); i += stride) bottoms.push_back(boxes[i].bottom);
    std::sort(bottoms.begin(), bottoms.end());
    std::size_t standing = 0;
    metrics.baseline = densest(bottoms, 0.14f * height, standing);
    // Letters that hang below the line may outnumber those that stand on it, which then are the next cluster
    // above.
    const auto above = std::lower_bound(bottoms.begin(), bottoms.end(), metrics.baseline - 0.15f * height);
    std::size_t higher = 0;
    const float other = densest({bottoms.begin(), above}, 0.14f * height, higher);
    if (higher * 2 >= standing && higher > 0 && metrics.baseline - other < 0.6f * height)
        metrics.baseline = other;

    std::vector<float> heights;
    for (std::size_t i = 0; i < boxes.size(); i += stride) heights.push_back(metrics.baseline - boxes[i].top);
    std::sort(heights.begin(), heights.end(), std::greater<>());
    // The tallest height that at least two share, so that one slash or bracket does not set it.
    float tallest = heights.front();
    for (std::size_t i = 0; i + 1 < heights.size(); ++i)
        if (heights[i] - heights[i + 1] < 0.08f * heights[i]) {
            tallest = heights[i];
            break;
        }
    float sum = 0, count = 0, lower = 0;
    for (const float h : heights) {
        if (h > 1.02f * tallest) continue;
        if (h >= 0.88f * tallest) {
            sum += h;
            ++count;
        } else if (h >= 0.5f * tallest) {
            ++lower;
        }
    }
    metrics.capHeight = std::max(2.0f, count > 0 ? sum / count : tallest);
    metrics.oneHeight = lower == 0;
    return metrics;
}

std::vector<LinePieces> textLines(std::vector<Piece> pieces, float height) {
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
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
