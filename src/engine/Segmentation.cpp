#include "engine/Segmentation.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/DotPrint.h"
#include "engine/LineCharacters.h"

namespace dravik {
namespace {

// Below this the image does not tell clearly whether the print is dark or light, and both are tried.
constexpr double kClearPolarity = 0.5;
// A segmentation that looks this much like text needs no other tried.
constexpr double kClearText = 0.7;
// What is tried later must look this much more like text, since it is the less likely.
constexpr double kBetter = 1.1;
// Characters lower than this cannot be told apart.
constexpr float kLeastHeight = 5;

// What is as large as the image itself is its frame or a shadow.
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

Segmentation segmentWith(const Binarizer& binarizer, bool dark, int tile) {
    Segmentation result;
    result.ink = binarizer.separate(dark, tile);
    if (result.ink.empty()) return result;
    std::vector<Piece> pieces = components(result.ink, 3);
    dropFrames(pieces, result.ink);
    pieces = joinedFragments(joinedDots(std::move(pieces)), result.ink.width, result.ink.height);
    float height = usualHeight(pieces);
    if (height < kLeastHeight) return result;
    result.frame.slope = printSlope(pieces, height);
    for (Piece& piece : pieces) piece.measure(result.frame);
    height = usualHeight(pieces);
    for (LinePieces& line : textLines(std::move(pieces), height)) {
        const LineMetrics first = line.metrics;
        std::vector<Piece> characters = lineCharacters(std::move(line), result.frame);
        std::vector<Box> boxes;
        for (const Piece& piece : characters)
            if (piece.box.height() >= 0.45f * first.capHeight && piece.box.width() < 2 * first.capHeight)
                boxes.push_back(piece.box);
        result.lines.push_back(boxes.empty() ? first : measureLine(boxes, first.capHeight));
        const int number = static_cast<int>(result.lines.size()) - 1;
        for (Piece& piece : characters) result.glyphs.push_back({std::move(piece), number});
    }
    return result;
}

float typicalHeight(const Segmentation& found) {
    std::vector<float> heights;
    for (const Glyph& glyph : found.glyphs)
        heights.push_back(found.lines[static_cast<std::size_t>(glyph.line)].capHeight);
    if (heights.empty()) return 0;
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    return *middle;
}

// Once more with the grain that suits the print's height, when the first was far from it.
Segmentation refined(const Binarizer& binarizer, bool dark, int tile) {
    Segmentation found = segmentWith(binarizer, dark, tile);
    const float height = typicalHeight(found);
    if (height <= 0) return found;
    const int suited = std::clamp(static_cast<int>(std::lround(0.75f * height)), 8, 400);
    if (suited * 3 > tile * 2 && suited * 2 < tile * 3) return found;
    Segmentation again = segmentWith(binarizer, dark, suited);
    return again.glyphs.empty() ? found : again;
}

// How much a segmentation looks like text, 0 to 1: characters of usual shape that stand on their lines and
// are thin against their boxes, several to a line.
double likeness(const Segmentation& found) {
    if (found.glyphs.empty()) return 0;
    double usual = 0, all = 0;
    for (const Glyph& glyph : found.glyphs) {
        const LineMetrics& line = found.lines[static_cast<std::size_t>(glyph.line)];
        const Box& box = glyph.piece.box;
        const float height = box.height() / line.capHeight, width = box.width() / line.capHeight;
        const float fill = static_cast<float>(glyph.piece.area) / (box.width() * box.height());
        const bool stands = std::abs(box.bottom - line.baseline) < 0.15f * line.capHeight ||
                            std::abs(line.baseline - line.capHeight - box.top) < 0.15f * line.capHeight;
        all += glyph.piece.area;
        if (height > 0.6f && height < 1.4f && width < 1.2f && stands && (fill < 0.75f || width < 0.35f))
            usual += glyph.piece.area;
    }
    const double perLine = static_cast<double>(found.glyphs.size()) / static_cast<double>(found.lines.size());
    return usual / all * perLine / (perLine + 0.25);
}

}  // namespace

namespace {

// The first try is with the likelier polarity and a coarse grain. Where what comes out does not look like
// text, other grains and the other polarity are tried: surroundings of a part may outweigh its print.
Segmentation bestOf(const Binarizer& binarizer) {
    Segmentation best;
    double most = 0;
    for (const int tile : {binarizer.firstTile(), binarizer.firstTile() / 3, binarizer.firstTile() / 6}) {
        if (tile < 8 && tile != binarizer.firstTile()) continue;
        const double darkness = binarizer.darkness(tile);
        for (const bool dark : {darkness >= 0, darkness < 0}) {
            Segmentation found = refined(binarizer, dark, tile);
            const bool likelier = dark == (darkness >= 0);
            const double value = likeness(found) * (likelier ? 1 : 1 - 0.5 * std::abs(darkness));
            if (value > kBetter * most) {
                most = value;
                best = std::move(found);
            }
            if (likelier && most >= kClearText && std::abs(darkness) >= kClearPolarity) return best;
        }
        if (most >= kClearText) return best;
    }
    return best;
}

}  // namespace

Segmentation segment(const GreyImage& image) {
    return bestOf(Binarizer(image));
}

}  // namespace dravik
