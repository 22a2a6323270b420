#include "engine/scene/TextFinder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "base/StableSort.h"
#include "engine/image/Binarization.h"
#include "engine/image/Components.h"
#include "engine/scene/BarPattern.h"
#include "engine/scene/PieceChains.h"
#include "engine/scene/PrintDirections.h"

namespace dravik::engine {
namespace {

// Most pixels of the largest picture that is searched.
constexpr std::int64_t kMostSearched = 700'000;
// Reductions of that picture that are searched too, so that print of every size is once as high as suits.
constexpr std::array<int, 5> kReductions = {1, 2, 3, 4, 6};
// Wider than strokes, about three quarters of the height that suits, in working pixels.
constexpr int kSide = 14;
// Print of dots runs together when it is blurred so much, in working pixels.
constexpr float kDotBlur = 1.4f;
constexpr std::size_t kMostPieces = 6'000;

// A line that is so much clearer than one of the other polarity at its place is print, and that is none.
constexpr float kMuchClearer = 1.3f;

// A picture with so many edges of ink is noise or texture.
constexpr std::int64_t kFewestPixelsToEdge = 14;

struct View {
    int scale = 1;
    bool dark = true;
    float blur = 0;
};

// Pieces that may be characters, in a picture that is not turned yet.
std::vector<Piece> candidates(const InkImage& ink) {
    std::vector<Piece> pieces = components(ink, 6, kMostPieces);
    std::erase_if(pieces, [&](const Piece& piece) {
        const float size = extent(piece);
        return size < 0.5f * kLeastPieceHeight || size > 2.2f * kMostPieceHeight || piece.box.left < 1 ||
               piece.box.top < 1 || piece.box.right > static_cast<float>(ink.width) - 1 ||
               piece.box.bottom > static_cast<float>(ink.height) - 1;
    });
    return pieces;
}

struct Seen {
    TextLine line;
    int scale = 1;  // of the view
};

// What a search has found: lines, and places that are full of bars or squares instead.
struct Findings {
    std::vector<Seen> lines, codes;
};

void searchView(const Binarizer& binarizer, const View& view, Findings& found) {
    const InkImage ink = binarizer.separate(view.dark, kSide, view.blur);
    if (ink.empty() || ink.edges() > static_cast<std::int64_t>(ink.ink.size()) / kFewestPixelsToEdge) return;
    std::vector<Piece> pieces = candidates(ink);
    if (pieces.size() < kFewestInChain) return;
    for (const float direction : printDirections(pieces, ink.width, ink.height, kLeastPieceHeight)) {
        float angle = direction;
        std::vector<Chain> rows = chainsAlong(pieces, angle);
        // What is measured in the frame is longer by this than in the picture.
        const float unit = 1 / std::cos(angle), shrink = ink.scale / unit;
        const auto lineOf = [&](const Chain& row, float left, float right) {
            return TextLine{angle,     left * shrink, right * shrink, row.top * shrink, row.bottom * shrink,
                            view.dark, row.score};
        };
        const auto isCode = [&](Chain& row) {
            if (!isBarcode(row, pieces, unit) && !isAmongMany(row, pieces)) return false;
            row.score = static_cast<float>(row.members.size());
            if (view.blur == 0)
                found.codes.push_back(
                    {lineOf(row, pieces[row.members.front()].box.left, pieces[row.members.back()].box.right),
                     view.scale});
            return true;
        };
        std::erase_if(rows, isCode);
        joinAcrossBlanks(rows, pieces, unit);
        for (Chain& row : rows) {
            trimEnds(row, pieces, unit);
            row.score = scoreOf(row, pieces);
            if (row.members.size() < kFewestInChain || row.score < 2) continue;
            float left = pieces[row.members.front()].box.left, right = left;
            for (const std::size_t i : row.members) right = std::max(right, pieces[i].box.right);
            reachOut(row, pieces, left, right);
            found.lines.push_back({lineOf(row, left, right), view.scale});
        }
        for (Piece& piece : pieces) piece.measure({});
    }
}

float areaOf(const TextLine& line) {
    return line.height() * (line.right - line.left);
}

float clearness(const TextLine& line) {
    return line.score * areaOf(line) * areaOf(line);
}

// Of the lines at one place the one that scores best. The spaces between and inside characters look like
// print of the other polarity, but are less high and less long than what is around them; where that is not
// plain, the polarity of the picture's clearest line counts.
TextLines best(std::vector<Seen> found, std::span<const Seen> codes) {
    // What finer views show as a code is none of the lines that coarser ones make of it.
    std::erase_if(found, [&](const Seen& seen) {
        return std::any_of(codes.begin(), codes.end(), [&](const Seen& code) {
            return seen.line.dark == code.line.dark && code.scale <= seen.scale &&
                   isSamePlace(seen.line, code.line) && code.line.score > 0.7f * seen.line.score &&
                   areaOf(code.line) > 0.3f * areaOf(seen.line);
        });
    });
    stableSort(found.begin(), found.end(),
               [](const Seen& a, const Seen& b) { return a.line.score > b.line.score; });
    std::vector<TextLine> lines;
    for (const Seen& seen : found)
        if (std::none_of(lines.begin(), lines.end(), [&](const TextLine& one) {
                return one.dark == seen.line.dark && isSamePlace(seen.line, one);
            }))
            lines.push_back(seen.line);
    const auto clearest =
        std::max_element(lines.begin(), lines.end(),
                         [](const TextLine& a, const TextLine& b) { return clearness(a) < clearness(b); });
    TextLines result;
    for (const TextLine& line : lines) {
        const float preferred = line.dark == clearest->dark ? kMuchClearer : 1 / kMuchClearer;
        const bool isOutdone = std::any_of(lines.begin(), lines.end(), [&](const TextLine& other) {
            return other.dark != line.dark && isSamePlace(line, other) &&
                   clearness(other) > preferred * clearness(line);
        });
        (isOutdone ? result.others : result.lines).push_back(line);
    }
    return result;
}

bool areAkin(const TextLine& a, const TextLine& b) {
    return std::abs(a.angle - b.angle) < 0.06f && a.dark == b.dark && a.height() < 2.2f * b.height() &&
           b.height() < 2.2f * a.height();
}

// The print of a part is of one direction, polarity and size, more or less: the lines most of which are akin
// stay, and what is as clear as they are.
void keepPrint(TextLines& found) {
    std::vector<TextLine>& lines = found.lines;
    const TextLine* print = nullptr;
    float most = 0;
    for (const TextLine& one : lines) {
        float weight = 0;
        for (const TextLine& other : lines)
            if (areAkin(one, other)) weight += other.score * std::sqrt(other.height());
        if (weight > most) {
            most = weight;
            print = &one;
        }
    }
    if (!print) return;
    const TextLine chosen = *print;
    const auto unlike = std::stable_partition(lines.begin(), lines.end(), [&](const TextLine& one) {
        return areAkin(one, chosen) || one.score >= std::max(6.0f, 0.8f * chosen.score);
    });
    found.others.insert(found.others.end(), unlike, lines.end());
    lines.erase(unlike, lines.end());
}

}  // namespace

TextLines findTextLines(const GreyImage& image, const std::stop_token& stop) {
    int least = 1;
    while (static_cast<std::int64_t>(image.width() / least) * (image.height() / least) > kMostSearched ||
           std::max(image.width(), image.height()) / least > kMostInkSide)
        ++least;
    Findings found;
    const Region whole{0, 0, image.width(), image.height()};
    for (const int reduction : kReductions) {
        if (stop.stop_requested()) return {};
        const int scale = least * reduction;
        const Binarizer binarizer(image, whole, static_cast<float>(scale));
        if (binarizer.empty() || std::min(binarizer.width(), binarizer.height()) < 2 * kSide) break;
        for (const bool dark : {true, false})
            for (const float blur : {0.0f, kDotBlur}) searchView(binarizer, {scale, dark, blur}, found);
    }
    TextLines print = best(std::move(found.lines), found.codes);
    for (std::vector<TextLine>* lines : {&print.lines, &print.others})
        std::erase_if(*lines, [&](const TextLine& line) { return isBarred(image, line); });
    keepPrint(print);
    sortInReadingOrder(print.lines);
    stableSort(print.others.begin(), print.others.end(),
               [](const TextLine& a, const TextLine& b) { return a.score > b.score; });
    return print;
}

}  // namespace dravik::engine
