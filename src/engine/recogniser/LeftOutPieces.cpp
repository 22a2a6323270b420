#include "engine/recogniser/LeftOutPieces.h"

#include <algorithm>
#include <utility>

#include "engine/segmentation/DotPrint.h"
#include "engine/segmentation/LineCharacters.h"

namespace dravik::engine {
namespace {

constexpr int kLeastArea = 3;
constexpr std::size_t kMostPieces = 3'000, kMostInLine = 16;
// Where such pieces stand and how large they are, in heights of capitals.
constexpr float kAbove = 0.35f, kBelow = 0.35f, kLeastSide = 0.12f, kMostHigh = 1.5f, kMostWide = 1.6f;
// What stands above or below a found character by more than this part of its width is none by itself.
constexpr float kMostShared = 0.5f;

InkImage withoutCharacters(const Segmentation& found) {
    InkImage rest = found.ink;
    for (const Glyph& glyph : found.glyphs)
        for (const Run& run : glyph.piece.runs) {
            const auto row = rest.ink.begin() + static_cast<std::ptrdiff_t>(run.y) * rest.width;
            std::fill(row + run.x0, row + run.x1, std::uint8_t{0});
        }
    return rest;
}

bool mayStandIn(const Box& box, const LineMetrics& line) {
    const float cap = line.capHeight;
    return box.top > line.baseline - (1 + kAbove) * cap && box.bottom < line.baseline + kBelow * cap &&
           std::max(box.width(), box.height()) > kLeastSide * cap && box.height() < kMostHigh * cap &&
           box.width() < kMostWide * cap;
}

}  // namespace

std::vector<std::vector<Piece>> leftOutPieces(const Segmentation& found) {
    std::vector<std::vector<Piece>> result(found.lines.size());
    if (found.ink.empty()) return result;
    std::vector<Piece> pieces = components(withoutCharacters(found), kLeastArea, kMostPieces);
    if (found.look.joins == Look::Fragments) pieces = joinedFragments(std::move(pieces));
    if (found.look.joins == Look::Dots)
        pieces = joinedByCloseness(joinedDots(std::move(pieces)), found.ink.width, found.ink.height);
    std::vector<LinePieces> lines(found.lines.size());
    for (Piece& piece : pieces) {
        piece.measure(found.frame);
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (mayStandIn(piece.box, found.lines[i])) {
                lines[i].pieces.push_back(std::move(piece));
                break;
            }
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].pieces.empty()) continue;
        lines[i].metrics = found.lines[i];
        joinAndMeasure(lines[i], found.frame);
        for (Piece& piece : lines[i].pieces) {
            const bool isAcross =
                std::any_of(found.glyphs.begin(), found.glyphs.end(), [&](const Glyph& one) {
                    const Box& box = one.piece.box;
                    return static_cast<std::size_t>(one.line) == i &&
                           std::min(box.right, piece.box.right) - std::max(box.left, piece.box.left) >
                               kMostShared * std::min(piece.box.width(), box.width());
                });
            if (!isAcross) result[i].push_back(std::move(piece));
        }
        const auto larger = [](const Piece& a, const Piece& b) { return a.area > b.area; };
        const auto fromLeft = [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; };
        if (result[i].size() > kMostInLine) {
            std::sort(result[i].begin(), result[i].end(), larger);
            result[i].resize(kMostInLine);
        }
        std::sort(result[i].begin(), result[i].end(), fromLeft);
    }
    return result;
}

}  // namespace dravik::engine
