#include "engine/segmentation/OneLook.h"

#include <algorithm>
#include <utility>

#include "engine/segmentation/DotPrint.h"
#include "engine/segmentation/LineCharacters.h"
#include "engine/segmentation/PrintCleaning.h"
#include "engine/segmentation/PrintSlope.h"
#include "engine/segmentation/Underscores.h"

namespace dravik::engine {
namespace {

// A picture with more runs of ink than this, and fewer pixels to each on average, is noise or texture.
constexpr std::int64_t kManyRuns = 10'000;
constexpr std::int64_t kFewestPixelsToRun = 12;
// A page of dotted print has fewer pieces, and more pixels to each.
constexpr std::size_t kMostPieces = 20'000, kAlwaysPieces = 5'000, kFewestPixelsToPiece = 256;
// Characters lower than this cannot be told apart.
constexpr float kLeastHeight = 5;

// Removes pieces as large as the image itself: its frame or a shadow.
void dropFrames(std::vector<Piece>& pieces, const InkImage& ink) {
    const float width = static_cast<float>(ink.width), height = static_cast<float>(ink.height);
    std::erase_if(pieces, [&](const Piece& piece) {
        const float share = static_cast<float>(piece.area) / (piece.box.width() * piece.box.height());
        const bool touches = piece.box.left < 1 || piece.box.top < 1 || piece.box.right > width - 1 ||
                             piece.box.bottom > height - 1;
        return (piece.box.width() > 0.6f * width && piece.box.height() > 0.6f * height && share < 0.3f) ||
               (touches && piece.box.width() > 0.8f * width) ||
               (touches && piece.box.height() > 0.8f * height &&
                piece.box.width() < 0.2f * piece.box.height() && width > 2 * height);
    });
}

// Parts of the least height that capitals may have: what is smaller each way is a speck, what is lower tells
// nothing of the usual height.
constexpr float kSpeck = 0.15f, kLowest = 0.75f;

// The usual height of the pieces that may be characters; 0 when there are none.
float characterHeight(const std::vector<Piece>& pieces, float leastHeight) {
    if (leastHeight <= 0) return usualHeight(pieces);
    std::vector<Piece> high;
    for (const Piece& piece : pieces)
        if (piece.box.height() >= kLowest * leastHeight) high.push_back({{}, piece.area, piece.box});
    return usualHeight(high);
}

// Whether the ink is so restless that it is no print; its pieces would take much more room than the image.
bool isTexture(const InkImage& ink) {
    const std::int64_t pixels = static_cast<std::int64_t>(ink.ink.size());
    return pixels >= kManyRuns * kFewestPixelsToRun && ink.edges() > pixels / kFewestPixelsToRun;
}

}  // namespace

std::vector<LinePieces> linesSeen(Segmentation& print) {
    const InkImage& ink = print.ink;
    const Look& look = print.look;
    if (ink.empty() || isTexture(ink)) return {};
    std::vector<Piece> pieces =
        components(ink, 3, std::min(kMostPieces, kAlwaysPieces + ink.ink.size() / kFewestPixelsToPiece));
    dropFrames(pieces, ink);
    if (look.joins == Look::Fragments) pieces = joinedFragments(std::move(pieces));
    if (look.joins == Look::Dots)
        pieces = joinedByCloseness(joinedDots(std::move(pieces)), ink.width, ink.height);
    const float speck = kSpeck * look.leastHeight;
    std::erase_if(pieces, [speck](const Piece& piece) {
        return piece.box.width() < speck && piece.box.height() < speck;
    });
    float height = characterHeight(pieces, look.leastHeight);
    if (height < kLeastHeight) return {};
    print.frame.slope = printSlope(pieces, height);
    for (Piece& piece : pieces) piece.measure(print.frame);
    height = characterHeight(pieces, look.leastHeight);
    print.frame.slant = printSlant(pieces, print.frame.slope, height);
    if (print.frame.slant != 0)
        for (Piece& piece : pieces) piece.measure(print.frame);
    std::vector<LinePieces> lines = textLines(std::move(pieces), print.frame, height);
    std::erase_if(
        lines, [&](const LinePieces& line) { return line.metrics.capHeight < kLowest * look.leastHeight; });
    return lines;
}

void findCharacters(Segmentation& print, std::vector<LinePieces>&& lines, const Binarizer& binarizer) {
    CharacterDecisions& decisions = print.decisions;
    decisions = {};
    for (LinePieces& line : lines) tellCharactersApart(line, print.frame, decisions);
    dropForeign(lines, print.ink, binarizer, print.look, decisions.prints);
    addUnderscores(lines, print.ink, print.frame);
    std::size_t count = 0;
    for (const LinePieces& line : lines) count += line.pieces.size();
    print.glyphs.reserve(count);
    for (LinePieces& line : lines) {
        const LineMetrics& first = line.metrics;
        std::vector<Box> boxes;
        for (const Piece& piece : line.pieces)
            if (piece.box.height() >= 0.45f * first.capHeight && piece.box.width() < 2 * first.capHeight)
                boxes.push_back(piece.box);
        print.lines.push_back(boxes.empty() ? first : measureLine(boxes, first.capHeight));
        const int number = static_cast<int>(print.lines.size()) - 1;
        for (Piece& piece : line.pieces) print.glyphs.push_back({std::move(piece), number});
        for (Piece& piece : line.leftOut) print.leftOut.push_back({std::move(piece), number});
    }
}

}  // namespace dravik::engine
