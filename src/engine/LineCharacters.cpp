#include "engine/LineCharacters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

#include "engine/CellGrid.h"

namespace dravik {
namespace {

void sortByPlace(std::vector<Piece>& pieces) {
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
}

// Joins the pairs of neighbours that `belong` says are one character.
std::vector<Piece> joinedWhere(std::vector<Piece> pieces, float reach,
                               const std::function<bool(const Piece&, const Piece&)>& belong) {
    sortByPlace(pieces);
    Partition partition(pieces.size());
    float widest = 0;
    for (const Piece& piece : pieces) widest = std::max(widest, piece.box.width());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t j = i + 1;
             j < pieces.size() && pieces[j].box.left < pieces[i].box.left + widest + reach; ++j)
            if (pieces[j].box.left < pieces[i].box.right + reach && belong(pieces[i], pieces[j]))
                partition.unite(i, j);
    return joined(std::move(pieces), partition);
}

float sharedWidth(const Box& a, const Box& b) {
    return std::min(a.right, b.right) - std::max(a.left, b.left);
}
float sharedHeight(const Box& a, const Box& b) {
    return std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
}

// Parts one above the other: the dot of an i, the bars of an equal sign, the halves of a broken figure.
bool oneAboveOther(const Piece& a, const Piece& b, float capHeight) {
    const float narrower = std::min(a.box.width(), b.box.width());
    const float lower = std::min(a.box.height(), b.box.height());
    const float width = sharedWidth(a.box, b.box);
    if (width < 0.45f * narrower) return false;
    if (width > 0.8f * narrower && lower < 0.5f * capHeight) return true;
    return sharedHeight(a.box, b.box) < 0.5f * lower || lower < 0.5f * capHeight;
}

// The two strokes of a double quotation mark: alike, high in the line and close together.
bool quoteStrokes(const Piece& a, const Piece& b, const LineMetrics& metrics) {
    const float cap = metrics.capHeight;
    const float top = metrics.baseline - cap;
    for (const Box& box : {a.box, b.box})
        if (box.bottom > top + 0.62f * cap || box.top > top + 0.3f * cap || box.height() > 0.55f * cap ||
            box.height() < 0.15f * cap || box.width() > 0.36f * cap)
            return false;
    return std::abs(a.box.height() - b.box.height()) < 0.15f * cap && b.box.left - a.box.right < 0.33f * cap;
}

}  // namespace

float characterPitch(std::span<const Piece> pieces, float capHeight) {
    std::vector<float> steps;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        const float step = pieces[i].box.middleX() - pieces[i - 1].box.middleX();
        if (step > 0.3f * capHeight && step < 4.5f * capHeight) steps.push_back(step);
    }
    if (steps.size() < 5) return 0;
    float best = 0, most = 0;
    for (float pitch = 0.45f * capHeight; pitch < 1.4f * capHeight; pitch *= 1.01f) {
        float fitting = 0, single = 0;
        for (const float step : steps) {
            const float times = std::max(1.0f, std::round(step / pitch));
            if (std::abs(step - times * pitch) < 0.14f * pitch) {
                fitting += 1;
                if (times < 1.5f) single += 1;
            }
        }
        const float support = (fitting + 0.25f * single) / static_cast<float>(steps.size());
        if (fitting >= 0.75f * static_cast<float>(steps.size()) && 2 * single >= fitting && support > most) {
            most = support;
            best = pitch;
        }
    }
    return best;
}

std::vector<Piece> joinedParts(LinePieces&& line) {
    const LineMetrics metrics = line.metrics;
    const float cap = metrics.capHeight;
    std::vector<Piece> pieces = joinedWhere(std::move(line.pieces), 0, [cap](const Piece& a, const Piece& b) {
        return oneAboveOther(a, b, cap);
    });
    pieces = joinedWhere(std::move(pieces), 0.35f * cap,
                         [&metrics](const Piece& a, const Piece& b) { return quoteStrokes(a, b, metrics); });
    sortByPlace(pieces);
    return pieces;
}

std::vector<Piece> lineCharacters(LinePieces&& line, const Frame& frame, CutDoubts& doubts) {
    const LineMetrics metrics = line.metrics;
    const float cap = metrics.capHeight;
    std::vector<Piece> pieces = joinedParts(std::move(line));
    // Where the steps from character to character are even too, the print is evenly spaced; else the borders
    // may have been found by chance.
    const float pitch = characterPitch(pieces, cap);
    if (const std::optional<CellGrid> grid = findGrid(pieces, frame, cap);
        grid && (std::abs(grid->pitch - pitch) < 0.06f * pitch || joinsFragmentsOnly(pieces, *grid, cap))) {
        const LineScale scale = lineScale(pieces, metrics, grid->pitch);
        pieces = cutTouching(std::move(pieces), frame, scale, doubts);
        return inCells(std::move(pieces), *grid, cap);
    }
    if (pitch > 0)
        // Two pieces in one character's place are its broken parts.
        pieces = joinedWhere(std::move(pieces), 0.3f * pitch, [pitch](const Piece& a, const Piece& b) {
            Box both = a.box;
            both.include(b.box);
            return both.width() < 0.95f * pitch &&
                   std::abs(a.box.middleX() - b.box.middleX()) < 0.58f * pitch;
        });
    const LineScale scale = lineScale(pieces, metrics, pitch);
    pieces = cutTouching(std::move(pieces), frame, scale, doubts);
    sortByPlace(pieces);
    return pieces;
}

}  // namespace dravik
