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

// Ink pixels of each column along the line, over the piece's width.
std::vector<float> columnProfile(const Piece& piece, const Frame& frame) {
    std::vector<float> profile(static_cast<std::size_t>(std::max(1.0f, piece.box.width())) + 2);
    for (const Run& run : piece.runs) {
        const float y = static_cast<float>(run.y) + 0.5f;
        for (int x = run.x0; x < run.x1; ++x) {
            const float along = frame.along(static_cast<float>(x) + 0.5f, y) - piece.box.left;
            const std::size_t column = static_cast<std::size_t>(std::max(0.0f, along));
            if (column < profile.size()) profile[column] += 1;
        }
    }
    return profile;
}

// Cuts a piece that is `parts` characters wide at the thin places near the even borders; the piece stays
// whole when one of the cuts would go through a thick place.
void splitEvenly(const Piece& piece, int parts, const Frame& frame, float thickest, std::vector<Piece>& out) {
    const std::vector<float> profile = columnProfile(piece, frame);
    const float step = piece.box.width() / static_cast<float>(parts);
    Piece rest = piece;
    std::vector<Piece> cuts;
    for (int part = 1; part < parts; ++part) {
        const float expected = step * static_cast<float>(part);
        float best = 1e9f, place = expected;
        for (float x = expected - 0.22f * step; x <= expected + 0.22f * step; x += 1) {
            const std::size_t column = static_cast<std::size_t>(std::max(0.0f, x));
            if (column >= profile.size()) break;
            const float cost = profile[column] * (1 + 0.5f * std::abs(x - expected) / step);
            if (cost < best) {
                best = cost;
                place = static_cast<float>(column) + 0.5f;
            }
        }
        if (best > thickest) {
            out.push_back(piece);
            return;
        }
        auto [left, right] = cut(rest, frame, piece.box.left + place);
        if (left.runs.empty() || right.runs.empty()) {
            out.push_back(piece);
            return;
        }
        cuts.push_back(std::move(left));
        rest = std::move(right);
    }
    for (Piece& one : cuts) out.push_back(std::move(one));
    out.push_back(std::move(rest));
}

float median(std::vector<float> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Usual width of the line's strokes, across which most runs go.
float strokeWidth(const std::vector<Piece>& pieces) {
    std::vector<float> lengths;
    for (const Piece& piece : pieces)
        for (const Run& run : piece.runs)
            if (lengths.size() < 20'000) lengths.push_back(static_cast<float>(run.x1 - run.x0));
    return median(std::move(lengths));
}

std::vector<Piece> splitTouching(std::vector<Piece> pieces, float pitch, const LineMetrics& metrics,
                                 const Frame& frame) {
    const float cap = metrics.capHeight;
    std::vector<float> widths;
    for (const Piece& piece : pieces)
        if (piece.box.height() > 0.5f * cap && piece.box.width() > 0.3f * cap &&
            piece.box.width() < 1.2f * cap)
            widths.push_back(piece.box.width());
    const float usual = widths.size() >= 3 ? median(widths) : 0.65f * cap;
    const float stroke = strokeWidth(pieces);
    std::vector<Piece> result;
    for (Piece& piece : pieces) {
        const float width = piece.box.width();
        int parts = 1;
        if (piece.box.height() > 0.5f * cap) {
            if (pitch > 0 && width > 1.3f * pitch)
                parts = static_cast<int>(std::lround((width + 0.15f * pitch) / pitch));
            else if (pitch <= 0 &&
                     width > std::max((piece.box.height() > 0.85f * cap ? 1.15f : 1.7f) * piece.box.height(),
                                      1.95f * usual))
                parts = std::max(2, static_cast<int>(std::lround((width + 0.2f * usual) / (1.2f * usual))));
        }
        const float thickest = pitch > 0 ? 0.38f * cap : std::min(0.3f * cap, 1.3f * stroke);
        if (parts > 1 && parts <= 40)
            splitEvenly(piece, parts, frame, thickest, result);
        else
            result.push_back(std::move(piece));
    }
    return result;
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

std::vector<Piece> lineCharacters(LinePieces&& line, const Frame& frame) {
    const LineMetrics metrics = line.metrics;
    const float cap = metrics.capHeight;
    std::vector<Piece> pieces = joinedWhere(std::move(line.pieces), 0, [cap](const Piece& a, const Piece& b) {
        return oneAboveOther(a, b, cap);
    });
    pieces = joinedWhere(std::move(pieces), 0.35f * cap,
                         [&metrics](const Piece& a, const Piece& b) { return quoteStrokes(a, b, metrics); });
    sortByPlace(pieces);
    // Where the steps from character to character are even too, the print is evenly spaced; else the borders
    // may have been found by chance.
    const float pitch = characterPitch(pieces, cap);
    if (const std::optional<CellGrid> grid = findGrid(pieces, frame, cap);
        grid && (std::abs(grid->pitch - pitch) < 0.06f * pitch || joinsFragmentsOnly(pieces, *grid, cap)))
        return inCells(std::move(pieces), *grid, frame, cap);
    if (pitch > 0)
        // Two pieces in one character's place are its broken parts.
        pieces = joinedWhere(std::move(pieces), 0.3f * pitch, [pitch](const Piece& a, const Piece& b) {
            Box both = a.box;
            both.include(b.box);
            return both.width() < 0.95f * pitch &&
                   std::abs(a.box.middleX() - b.box.middleX()) < 0.58f * pitch;
        });
    pieces = splitTouching(std::move(pieces), pitch, metrics, frame);
    sortByPlace(pieces);
    return pieces;
}

}  // namespace dravik
