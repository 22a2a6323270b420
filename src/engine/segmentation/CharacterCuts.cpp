#include "engine/segmentation/CharacterCuts.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "engine/image/Median.h"

namespace dravik::engine {
namespace {

// What a place along the line has of a piece.
struct Column {
    float ink = 0;
    float top = 1e9f;
    float bottom = -1e9f;
    int strokes = 0;
    int last = -10;  // row of the ink added last
};

std::vector<Column> columns(const Piece& piece, const Frame& frame) {
    std::vector<Column> result(static_cast<std::size_t>(std::max(1.0f, piece.box.width())) + 2);
    std::vector<Run> runs = piece.runs;
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return a.y < b.y; });
    for (const Run& run : runs) {
        const float y = static_cast<float>(run.y) + 0.5f;
        for (int x = run.x0; x < run.x1; ++x) {
            const float middle = static_cast<float>(x) + 0.5f;
            const float along = std::max(0.0f, frame.along(middle, y) - piece.box.left);
            if (along >= static_cast<float>(result.size())) continue;
            Column& column = result[static_cast<std::size_t>(along)];
            const float across = frame.across(middle, y);
            column.ink += 1;
            column.top = std::min(column.top, across - 0.5f);
            column.bottom = std::max(column.bottom, across + 0.5f);
            if (run.y > column.last + 1) ++column.strokes;
            column.last = run.y;
        }
    }
    return result;
}

// Ink at equal distances to both sides of the piece's middle, as a share of all.
double symmetry(const std::vector<Column>& profile) {
    double shared = 0, all = 0;
    for (std::size_t i = 0, j = profile.size() - 1; i < profile.size(); ++i, --j) {
        const Column &a = profile[i], &b = profile[j];
        if (a.ink > 0 && b.ink > 0) {
            const double both = static_cast<double>(std::min(a.bottom, b.bottom) - std::max(a.top, b.top));
            shared += std::max(0.0, both) - static_cast<double>(std::abs(a.ink - b.ink));
        }
        if (a.ink > 0) all += static_cast<double>(a.bottom - a.top);
    }
    return all > 0 ? std::max(0.0, shared / all) : 0;
}

struct Side {
    float highest = 0;                         // the most ink near the cut
    float top = 1e9f, bottom = -1e9f;          // of the whole part
    float nearTop = 1e9f, nearBottom = -1e9f;  // near the cut
};

Side sideOf(const std::vector<Column>& profile, int from, int to, int cut, int near) {
    Side side;
    for (int x = std::max(0, from); x < std::min(to, static_cast<int>(profile.size())); ++x) {
        const Column& column = profile[static_cast<std::size_t>(x)];
        if (column.ink <= 0) continue;
        side.top = std::min(side.top, column.top);
        side.bottom = std::max(side.bottom, column.bottom);
        if (std::abs(x - cut) > near) continue;
        side.highest = std::max(side.highest, column.ink);
        side.nearTop = std::min(side.nearTop, column.top);
        side.nearBottom = std::max(side.nearBottom, column.bottom);
    }
    return side;
}

}  // namespace

LineScale lineScale(std::span<const Piece> pieces, const LineMetrics& metrics, float pitch) {
    const float cap = metrics.capHeight;
    LineScale scale{metrics.baseline, cap, 0.15f * cap, 0.65f * cap, pitch, 0, 0};
    std::vector<float> widths, strokes;
    for (const Piece& piece : pieces) {
        if (piece.box.height() > 0.5f * cap && piece.box.width() > 0.2f * cap &&
            piece.box.width() < 1.2f * cap)
            widths.push_back(piece.box.width());
        for (const Run& run : piece.runs)
            if (strokes.size() < 20'000) strokes.push_back(static_cast<float>(run.x1 - run.x0));
    }
    if (widths.size() >= 3) scale.usualWidth = median(std::move(widths));
    if (!strokes.empty()) scale.stroke = std::max(1.0f, median(std::move(strokes)));
    if (pitch <= 0) return scale;
    float across = 0, along = 0, count = 0;
    for (const Piece& piece : pieces)
        if (piece.box.width() > 0.3f * pitch && piece.box.width() < 1.15f * pitch) {
            const float turn = 2 * std::numbers::pi_v<float> * piece.box.middleX() / pitch;
            across += std::cos(turn);
            along += std::sin(turn);
            ++count;
        }
    if (count < 3) return scale;
    scale.phase = std::atan2(along, across) * pitch / (2 * std::numbers::pi_v<float>);
    scale.evenness = std::hypot(across, along) / count;
    return scale;
}

std::vector<PossibleCut> possibleCuts(const Piece& piece, const Frame& frame, const LineScale& scale) {
    std::vector<PossibleCut> result;
    const float cap = scale.capHeight, width = piece.box.width();
    const float room = std::max(2.0f, 0.12f * cap);
    if (piece.box.height() < 0.3f * cap || width < 1.15f * scale.usualWidth || width < 0.45f * cap ||
        width > 40 * cap)
        return result;
    const std::vector<Column> profile = columns(piece, frame);
    const int count = static_cast<int>(profile.size()), near = std::max(2, static_cast<int>(0.2f * cap));
    const double mirrored = symmetry(profile);
    const auto ink = [&](int x) {
        const auto at = [&](int i) { return profile[static_cast<std::size_t>(i)].ink; };
        return 0.25f * (at(std::max(0, x - 1)) + 2 * at(x) + at(std::min(count - 1, x + 1)));
    };
    const int apart = std::max(1, static_cast<int>(0.1f * cap));
    for (int x = static_cast<int>(room); x < count - static_cast<int>(room); ++x) {
        const float here = ink(x);
        bool lowest = true;
        for (int other = std::max(0, x - apart); other <= std::min(count - 1, x + apart) && lowest; ++other)
            lowest = other < x ? ink(other) > here : ink(other) >= here;
        if (!lowest || here > 0.6f * cap) continue;
        const Column& column = profile[static_cast<std::size_t>(x)];
        const Side left = sideOf(profile, 0, x, x, near), right = sideOf(profile, x + 1, count, x, near);
        int plateau = 1;
        for (const int step : {-1, 1})
            for (int other = x + step; other >= 0 && other < count && ink(other) <= 1.35f * here + 1;
                 other += step)
                ++plateau;
        const auto caps = [cap](float length) { return static_cast<double>(length / cap); };
        const double riseLeft = caps(left.highest - here), riseRight = caps(right.highest - here);
        // White above and below the narrow place, between what stands at both sides of it.
        const float middle = column.ink > 0 ? 0.5f * (column.top + column.bottom) : piece.box.middleY();
        const double above =
            column.ink > 0 ? std::max(0.0, caps(column.top - std::max(left.nearTop, right.nearTop))) : 1;
        const double below =
            column.ink > 0 ? std::max(0.0, caps(std::min(left.nearBottom, right.nearBottom) - column.bottom))
                           : 1;
        const float at = static_cast<float>(x) + 0.5f, along = piece.box.left + at;
        const double narrower = caps(std::min(at, width - at)), wider = caps(std::max(at, width - at));
        const double height = caps(scale.baseline - middle);
        const double central = std::max(0.0, 1 - 4 * static_cast<double>(std::abs(at / width - 0.5f)));
        const double even = static_cast<double>(scale.evenness), pitched = scale.pitch > 0 ? 1 : 0;
        const double turn =
            scale.pitch > 0
                ? -std::cos(2 * std::numbers::pi * static_cast<double>((along - scale.phase) / scale.pitch))
                : 0;
        const double usual = static_cast<double>(std::min(4.0f, width / scale.usualWidth));
        const double pitches = scale.pitch > 0 ? static_cast<double>(std::min(4.0f, width / scale.pitch)) : 0;
        result.push_back({along,
                          {std::min(3.0, caps(width)),
                           usual,
                           pitched,
                           pitches,
                           even * turn,
                           even * pitches,
                           even,
                           caps(here),
                           std::min(4.0, static_cast<double>(here / scale.stroke)),
                           std::min(riseLeft, riseRight),
                           std::max(riseLeft, riseRight),
                           column.strokes > 1 ? 1.0 : 0.0,
                           height,
                           height * height,
                           std::min(1.5, narrower),
                           std::min(2.0, wider),
                           mirrored * central,
                           std::min(1.0, std::abs(caps(left.top - right.top))),
                           std::min(1.0, std::abs(caps(left.bottom - right.bottom))),
                           std::min(4.0, static_cast<double>(static_cast<float>(plateau) / scale.stroke)),
                           caps(piece.box.height()),
                           std::min(above, below),
                           std::max(above, below),
                           std::min(1.0, caps(width) * caps(here))}});
    }
    return result;
}

std::vector<Piece> cutTouching(std::vector<Piece> pieces, const Frame& frame, const LineScale& scale,
                               Decisions& cuts) {
    constexpr std::size_t kMostParts = 40;
    std::vector<Piece> result, open;
    for (Piece& piece : pieces) {
        open.clear();
        open.push_back(std::move(piece));
        std::size_t parts = 1;
        while (!open.empty()) {
            Piece one = std::move(open.back());
            open.pop_back();
            const PossibleCut* best = nullptr;
            double most = -1e9;
            const std::vector<PossibleCut> places = possibleCuts(one, frame, scale);
            for (const PossibleCut& place : places)
                if (const double value = kCutLikeness(place.traits); value > most) {
                    most = value;
                    best = &place;
                }
            if (best && cuts.decide(most) && parts < kMostParts) {
                auto [left, right] = cut(one, frame, best->along);
                if (!left.runs.empty() && !right.runs.empty()) {
                    ++parts;
                    open.push_back(std::move(right));
                    open.push_back(std::move(left));
                    continue;
                }
            }
            result.push_back(std::move(one));
        }
    }
    return result;
}

}  // namespace dravik::engine
