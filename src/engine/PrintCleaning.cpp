#include "engine/PrintCleaning.h"

#include <algorithm>
#include <cmath>

namespace dravik {
namespace {

// What is below these parts of the print's contrast and stroke width is none of it.
constexpr float kLeastContrast = 0.42f;
constexpr float kLeastStroke = 0.45f;

float median(std::vector<float> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Grey levels between a piece and what lies at its sides.
float contrast(const Piece& piece, const InkImage& ink, const Binarizer& seen, int reach) {
    std::int64_t sum = 0, count = 0;
    for (const Run& run : piece.runs) {
        const int inside = seen.level((run.x0 + run.x1) / 2, run.y);
        for (const int x : {run.x0 - reach, run.x1 + reach - 1})
            if (x >= 0 && x < ink.width && ink.at(x, run.y) < 128) {
                sum += std::abs(seen.level(x, run.y) - inside);
                ++count;
            }
    }
    return count ? static_cast<float>(sum) / static_cast<float>(count) : 0;
}

struct Traits {
    float contrast, stroke;
};

}  // namespace

float strokeWidth(const Piece& piece, const InkImage& ink) {
    int outline = 0;
    const auto isInk = [&](int x, int y) { return y >= 0 && y < ink.height && ink.at(x, y) >= 128; };
    for (const Run& run : piece.runs) {
        outline += 2;
        for (int x = run.x0; x < run.x1; ++x) outline += !isInk(x, run.y - 1) + !isInk(x, run.y + 1);
    }
    return 2 * static_cast<float>(piece.area) / static_cast<float>(std::max(1, outline));
}

void dropForeign(std::vector<LinePieces>& lines, const InkImage& ink, const Binarizer& seen) {
    std::vector<std::vector<Traits>> traits;
    std::vector<float> contrasts, strokes;
    for (const LinePieces& line : lines) {
        std::vector<Traits>& own = traits.emplace_back();
        for (const Piece& piece : line.pieces) {
            const float stroke = strokeWidth(piece, ink);
            own.push_back({contrast(piece, ink, seen, std::max(2, static_cast<int>(stroke))), stroke});
            if (piece.box.height() > 0.55f * line.metrics.capHeight) {
                contrasts.push_back(own.back().contrast);
                strokes.push_back(stroke / line.metrics.capHeight);
            }
        }
    }
    const float overall = median(contrasts), usualStroke = median(strokes);
    for (std::size_t l = 0; l < lines.size(); ++l) {
        LinePieces& line = lines[l];
        const float cap = line.metrics.capHeight;
        contrasts.clear();
        for (std::size_t i = 0; i < line.pieces.size(); ++i)
            if (line.pieces[i].box.height() > 0.55f * cap) contrasts.push_back(traits[l][i].contrast);
        // Uneven light weakens a whole line, dirt only a piece of it.
        const float own = median(contrasts), least = kLeastContrast * (contrasts.size() >= 4 ? own : overall);
        if (own < 0.4f * kLeastContrast * overall) {
            line.pieces.clear();
            continue;
        }
        std::vector<Piece> kept;
        for (std::size_t i = 0; i < line.pieces.size(); ++i) {
            Piece& piece = line.pieces[i];
            // A rule under the line may be thinner than the letters; what is longer than a character is a
            // scratch.
            const bool bar = piece.box.height() < 0.25f * cap && piece.box.width() > 0.3f * cap &&
                             piece.box.width() < 0.9f * cap;
            const bool mark = piece.box.height() < 0.4f * cap && piece.box.width() < 0.4f * cap;
            if (traits[l][i].contrast < least * (mark || bar ? 0.55f : 1.0f) && traits[l][i].contrast > 0)
                continue;
            if (!bar && traits[l][i].stroke < kLeastStroke * usualStroke * cap) continue;
            kept.push_back(std::move(piece));
        }
        // A small mark far from all characters is dirt.
        std::vector<bool> far(kept.size(), false);
        for (std::size_t i = 0; i < kept.size(); ++i) {
            const Box& box = kept[i].box;
            if (box.height() > 0.4f * cap || box.width() > 0.4f * cap) continue;
            const float before = i > 0 ? box.left - kept[i - 1].box.right : 1e9f;
            const float after = i + 1 < kept.size() ? kept[i + 1].box.left - box.right : 1e9f;
            far[i] = std::min(before, after) > 1.0f * cap;
        }
        line.pieces.clear();
        for (std::size_t i = 0; i < kept.size(); ++i)
            if (!far[i]) line.pieces.push_back(std::move(kept[i]));
    }
    std::erase_if(lines, [](const LinePieces& line) {
        return std::none_of(line.pieces.begin(), line.pieces.end(), [&line](const Piece& piece) {
            return piece.box.height() > 0.45f * line.metrics.capHeight;
        });
    });
}

}  // namespace dravik
