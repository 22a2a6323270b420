#include "engine/segmentation/PrintSlope.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace dravik::engine {
namespace {

constexpr float kSteepest = 0.085f;
constexpr std::size_t kMostSlopePoints = 12'000;
// Slopes or slants that are tried at once, since a sum waits for the one before it.
constexpr std::size_t kAtOnce = 4;

// A run of ink: its middle, row and length.
struct Chord {
    float x, y, ink;
};

}  // namespace

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
    std::vector<Chord> chords;
    chords.reserve(runs / stride + 1);
    for (std::size_t next = 0; const Piece* piece : characters) {
        for (; next < piece->runs.size(); next += stride) {
            const Run& run = piece->runs[next];
            chords.push_back({0.5f * static_cast<float>(run.x0 + run.x1), static_cast<float>(run.y),
                              static_cast<float>(run.x1 - run.x0)});
        }
        next -= piece->runs.size();
    }
    // How sharp the rows are whose ink is summed up along so many slopes.
    using Slopes = std::array<float, kAtOnce>;
    std::vector<Slopes> profile(static_cast<std::size_t>(reach / bin) + 2);
    const auto sharpness = [&](const Slopes& slopes) {
        std::fill(profile.begin(), profile.end(), Slopes{});
        Slopes* const rows = profile.data();
        const std::size_t last = profile.size() - 1;
        for (const Chord& chord : chords)
            for (std::size_t i = 0; i < kAtOnce; ++i) {
                const float place = (chord.y - slopes[i] * chord.x - origin) / bin;
                const std::size_t cell = static_cast<std::size_t>(std::max(0.0f, place));
                const float part = place - static_cast<float>(cell);
                if (cell >= last) continue;
                rows[cell][i] += chord.ink * (1 - part);
                rows[cell + 1][i] += chord.ink * part;
            }
        std::array<double, kAtOnce> sums{};
        for (std::size_t row = 1; row < profile.size(); ++row)
            for (std::size_t i = 0; i < kAtOnce; ++i) {
                const double step = static_cast<double>(rows[row][i] - rows[row - 1][i]);
                sums[i] += step * step;
            }
        // Steep slopes are rare, and need the clearer evidence.
        for (std::size_t i = 0; i < kAtOnce; ++i)
            sums[i] *= std::exp(-4.0 * static_cast<double>(std::abs(slopes[i])));
        return sums;
    };
    float best = 0;
    double most = sharpness({})[0];
    const auto search = [&](float from, float to, float step) {
        for (float slope = from; slope <= to;) {
            Slopes slopes{};
            std::size_t count = 0;
            for (; count < kAtOnce && slope <= to; slope += step) slopes[count++] = slope;
            const std::array<double, kAtOnce> values = sharpness(slopes);
            for (std::size_t i = 0; i < count; ++i)
                if (values[i] > most) {
                    most = values[i];
                    best = slopes[i];
                }
        }
    };
    const float step = bin / (right - left);
    search(-kSteepest, kSteepest, step);
    search(best - step, best + step, step / 4);
    return best;
}

float printSlant(std::span<const Piece> pieces, float slope, float height) {
    constexpr float kMostSlant = 0.34f, kStep = 0.02f;
    constexpr int kMost = static_cast<int>(kMostSlant / kStep + 0.5f), kApart = 3;
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
    using Slants = std::array<float, kAtOnce>;
    std::vector<Slants> columns;
    double most = 0;
    int best = 0;
    const auto tryThese = [&](const std::array<int, kAtOnce>& steps) {
        Slants slants{};
        for (std::size_t i = 0; i < kAtOnce; ++i) slants[i] = static_cast<float>(steps[i]) * kStep;
        std::array<double, kAtOnce> sums{};
        for (const Piece* piece : upright) {
            const float middle = piece->box.middleY(),
                        left = piece->box.left - kMostSlant * piece->box.height() - 1;
            columns.assign(
                static_cast<std::size_t>(piece->box.width() + 2 * kMostSlant * piece->box.height()) + 4, {});
            Slants* const inks = columns.data();
            const std::size_t last = columns.size() - 1;
            for (const Run& run : piece->runs) {
                const float y = static_cast<float>(run.y) + 0.5f;
                for (std::size_t i = 0; i < kAtOnce; ++i) {
                    const float shift = slope * y + slants[i] * (y - middle) - left;
                    for (const int x : {run.x0, run.x1}) {
                        const float place = std::max(0.0f, static_cast<float>(x) + shift);
                        const std::size_t column = static_cast<std::size_t>(place);
                        if (column >= last) continue;
                        const float part = place - static_cast<float>(column);
                        inks[column][i] += 1 - part;
                        inks[column + 1][i] += part;
                    }
                }
            }
            for (const Slants& counts : columns)
                for (std::size_t i = 0; i < kAtOnce; ++i)
                    sums[i] += static_cast<double>(counts[i] * counts[i]);
        }
        for (std::size_t i = 0; i < kAtOnce; ++i) {
            const double sum = sums[i] * std::exp(-1.5 * static_cast<double>(std::abs(slants[i])));
            if (sum > most) {
                most = sum;
                best = steps[i];
            }
        }
    };
    // In wide steps, then about the best.
    for (int first = -kMost; first <= kMost; first += static_cast<int>(kAtOnce) * kApart)
        tryThese({first, first + kApart, first + 2 * kApart, first + 3 * kApart});
    tryThese({best - 2, best - 1, best + 1, best + 2});
    return std::abs(best) < 2 ? 0 : static_cast<float>(best) * kStep;
}

}  // namespace dravik::engine
