#include "engine/segmentation/PrintSlope.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dravik::engine {
namespace {

constexpr float kSteepest = 0.085f;
constexpr std::size_t kMostSlopePoints = 12'000;

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

}  // namespace dravik::engine
