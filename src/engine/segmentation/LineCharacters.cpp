#include "engine/segmentation/LineCharacters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

#include "engine/segmentation/CellGrid.h"
#include "engine/segmentation/CharacterJoins.h"

namespace dravik::engine {
namespace {

// Joins the pairs of neighbours that `belong` says are one character.
std::vector<Piece> joinedWhere(std::vector<Piece> pieces,
                               const std::function<bool(const Piece&, const Piece&)>& belong) {
    arrange(pieces);
    Partition partition(pieces.size());
    float widest = 0;
    for (const Piece& piece : pieces) widest = std::max(widest, piece.box.width());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t j = i + 1; j < pieces.size() && pieces[j].box.left < pieces[i].box.left + widest;
             ++j)
            if (pieces[j].box.left < pieces[i].box.right && belong(pieces[i], pieces[j]))
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

LineScale joinAndMeasure(LinePieces& line, const Frame& frame) {
    const float cap = line.metrics.capHeight;
    line.pieces = joinedWhere(std::move(line.pieces),
                              [cap](const Piece& a, const Piece& b) { return oneAboveOther(a, b, cap); });
    arrange(line.pieces);
    // Where the steps from character to character are even too, the print is evenly spaced; else the borders
    // may have been found by chance.
    float pitch = characterPitch(line.pieces, cap);
    // Without even steps a grid counts only if it joins something.
    const bool mayCount = pitch > 0 || !joinsNever(line.pieces, cap);
    if (const std::optional<CellGrid> grid = mayCount ? findGrid(line.pieces, frame, cap) : std::nullopt;
        grid &&
        (std::abs(grid->pitch - pitch) < 0.06f * pitch || joinsFragmentsOnly(line.pieces, *grid, cap)))
        pitch = grid->pitch;
    return lineScale(line.pieces, line.metrics, pitch);
}

void tellCharactersApart(LinePieces& line, const Frame& frame, CharacterDecisions& decisions) {
    const LineScale scale = joinAndMeasure(line, frame);
    line.pieces =
        joinParts(cutTouching(std::move(line.pieces), frame, scale, decisions.cuts), scale, decisions.joins);
}

}  // namespace dravik::engine
