#include "engine/recogniser/BaseReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

#include "engine/recogniser/LineLattice.h"
#include "engine/segmentation/OtherSize.h"

namespace dravik::engine {
namespace {

constexpr double kWorthNaming = 0.01;
constexpr std::size_t kMostAlternatives = 6;
// An expected character of less likelihood is a mistake where another has more than the second.
constexpr double kHardlyExpected = 0.002, kClearlyOther = 0.6;
// A character counts for a view by how much likelier it is a whole one than this, at most as much as the
// second says; measured on generated part images.
constexpr double kUsuallyWhole = 0.3, kLeastWhole = 0.02;
// A view is clear when it has so many characters, together so likely whole ones, as their geometric mean, and
// none more than this a half, a double or dirt.
constexpr std::size_t kFewestClear = 4;
constexpr double kClearlyWhole = 0.8;
constexpr float kHardlyNone = 0.4f;

// Of two sizes of a line, a piece that looks whole in neither counts by this, a logarithm: it says little of
// the size.
constexpr double kWholeInNeither = -1.5;

// What was hardly likelier dirt than print is taken for print where it is so likely a whole character.
constexpr double kProbablyWhole = 0.7;

// How much it tells of print that it looks like text, and that its characters are whole: a logistic
// regression on the lines that are looked at in generated part images.
constexpr double kByLikeness = 0.49, kByWholeness = 0.36;

struct ReadLine {
    int line = 0;
    std::vector<ReadPiece> pieces;
};

// How likely the characters of a line are to be any, as a logarithm.
double trust(std::span<const PatchLikelihoods> line) {
    double sum = 0;
    for (const PatchLikelihoods& one : line)
        sum += std::max(std::log(kLeastWhole), static_cast<double>(whole(one)));
    return sum;
}

// How well the likeliest pieces of a line go with a size that it may have.
double fit(std::span<const ReadPiece> pieces) {
    double sum = 0;
    for (const ReadPiece& one : pieces)
        sum += std::max(kWholeInNeither, static_cast<double>(whole(one.likelihoods))) -
               std::log(kUsuallyWhole) - static_cast<double>(one.doubt);
    return sum;
}

bool areSure(std::span<const ReadPiece> pieces) {
    return std::none_of(pieces.begin(), pieces.end(),
                        [](const ReadPiece& one) { return isUnsure(one.likelihoods); });
}

std::vector<ReadPiece> asFound(std::span<const Glyph> line, std::span<const PatchLikelihoods> likelihoods) {
    std::vector<ReadPiece> result;
    for (std::size_t i = 0; i < line.size(); ++i) result.push_back({line[i].piece, likelihoods[i]});
    return result;
}

enum class Sizes { AsMeasured, Likeliest };

// All lines, each in the size that suits it: `value` says how well a line as it was found goes in a size, its
// first character's number being the second argument.
template <typename Value>
std::vector<ReadLine> linesOf(const Segmentation& found, Pieces how, Value value,
                              Sizes sizes = Sizes::Likeliest) {
    std::vector<ReadLine> result;
    for (std::size_t from = 0; from < found.glyphs.size();) {
        std::size_t to = from;
        while (to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line) ++to;
        const LineMetrics& line = found.lines[static_cast<std::size_t>(found.glyphs[from].line)];
        const std::span<const Glyph> glyphs = std::span(found.glyphs).subspan(from, to - from);
        const std::vector<PatchLikelihoods> own = lineLikelihoods(found, from, to, line);
        ReadLine& read = result.emplace_back();
        read.line = glyphs.front().line;
        std::optional<LineBoundaries> boundaries;
        if (how == Pieces::Likeliest) {
            boundaries.emplace(found.ink, found.frame, glyphs, line);
            read.pieces = likeliestPieces(found, from, own, *boundaries, line);
        } else {
            read.pieces = asFound(glyphs, own);
        }
        std::optional<OtherSize> other;
        // Pieces that are whole in one size are cut and joined rightly whatever the size.
        if (sizes == Sizes::Likeliest && !(how == Pieces::Likeliest && areSure(read.pieces)))
            other = otherSize(found.lines, line);
        if (other) {
            LineMetrics smaller = line;
            smaller.capHeight = other->capHeight;
            const std::vector<PatchLikelihoods> others = lineLikelihoods(found, from, to, smaller);
            if (boundaries) {
                // Characters that touch may look like one of another size: the sizes are told apart by what
                // their cuts make of it.
                std::vector<ReadPiece> pieces = likeliestPieces(found, from, others, *boundaries, smaller);
                if (fit(pieces) - other->doubt > fit(read.pieces)) read.pieces = std::move(pieces);
            } else if (value(others, from) - other->doubt > value(own, from)) {
                read.pieces = asFound(glyphs, others);
            }
        }
        from = to;
    }
    return result;
}

std::vector<ReadLine> linesOf(const Segmentation& found, Pieces how, Sizes sizes = Sizes::Likeliest) {
    return linesOf(
        found, how, [](std::span<const PatchLikelihoods> line, std::size_t) { return trust(line); }, sizes);
}

SuggestedCharacter suggestion(const PatchLikelihoods& of, std::size_t best) {
    SuggestedCharacter one;
    one.noCharacter = std::exp(static_cast<double>(of[kNoCharacter]));
    std::array<std::size_t, kNoCharacter> order;
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return of[a] > of[b]; });
    const auto add = [&](std::size_t place) {
        one.alternatives.push_back(
            {std::string(1, kRecognisedCharacters[place]), std::exp(static_cast<double>(of[place]))});
    };
    add(best);
    for (const std::size_t place : order) {
        if (std::exp(static_cast<double>(of[place])) < kWorthNaming ||
            one.alternatives.size() >= kMostAlternatives)
            break;
        if (place != best) add(place);
    }
    return one;
}

// How much likelier than usual the characters are whole ones, as a logarithm, less the doubts of their
// pieces.
double wholeCharacterOdds(const std::vector<ReadLine>& lines) {
    double sum = 0;
    for (const ReadLine& line : lines)
        for (const ReadPiece& one : line.pieces)
            sum += std::log(std::max(kLeastWhole, std::exp(static_cast<double>(whole(one.likelihoods)))) /
                            kUsuallyWhole) -
                   static_cast<double>(one.doubt);
    return sum;
}

Wholeness wholeness(const std::vector<ReadLine>& lines) {
    Wholeness result{wholeCharacterOdds(lines), true, true};
    std::size_t characters = 0;
    for (const ReadLine& line : lines) {
        result.isSure = result.isSure && areSure(line.pieces);
        for (const ReadPiece& one : line.pieces) {
            result.isClear = result.isClear && std::exp(one.likelihoods[kNoCharacter]) < kHardlyNone;
            ++characters;
        }
    }
    result.isClear = result.isClear && characters >= kFewestClear &&
                     result.odds > static_cast<double>(characters) * std::log(kClearlyWhole / kUsuallyWhole);
    return result;
}

// Makes those that were left out characters that are likely whole ones.
void takeBack(Segmentation& found) {
    const auto isBefore = [](const Glyph& a, const Glyph& b) {
        return a.line != b.line ? a.line < b.line : a.piece.box.left < b.piece.box.left;
    };
    for (Glyph& one : found.leftOut) {
        const LineMetrics& line = found.lines[static_cast<std::size_t>(one.line)];
        const CharacterPatch patch = characterPatch(found.ink, found.frame, one.piece, line);
        if (whole(patchLikelihoods({&patch, 1}).front()) < std::log(kProbablyWhole)) continue;
        found.glyphs.insert(std::upper_bound(found.glyphs.begin(), found.glyphs.end(), one, isBefore),
                            std::move(one));
    }
    found.leftOut.clear();
}

}  // namespace

bool CharacterLikelihood::disagrees() const {
    return isKnown && likelihood < kHardlyExpected && likeliest.likelihood > kClearlyOther &&
           !areDrawnAlike(expected, likeliest.character);
}

double wholeCharacterOdds(const Segmentation& found) {
    return wholeCharacterOdds(linesOf(found, Pieces::AsFound));
}

double printOdds(const Segmentation& found) {
    if (found.glyphs.empty()) return 0;
    return kByLikeness * found.likeness + kByWholeness * wholeCharacterOdds(found);
}

Wholeness takeWholeCharacters(Segmentation& found, Pieces pieces) {
    if (pieces == Pieces::Likeliest) takeBack(found);
    // A wrong size makes whole characters other ones, but no halves or doubles: what tells views apart
    // quickly does without it.
    std::vector<ReadLine> lines =
        linesOf(found, pieces, pieces == Pieces::Likeliest ? Sizes::Likeliest : Sizes::AsMeasured);
    const Wholeness whole = wholeness(lines);
    if (pieces == Pieces::AsFound) return whole;
    std::vector<Glyph> glyphs;
    for (ReadLine& line : lines)
        for (ReadPiece& one : line.pieces) glyphs.push_back({one.piece, line.line});
    // All dirt: of print that is not known.
    if (glyphs.empty())
        return {static_cast<double>(found.glyphs.size()) * std::log(kLeastWhole / kUsuallyWhole)};
    found.glyphs = std::move(glyphs);
    return whole;
}

std::vector<SuggestedCharacter> readWithoutFont(const Segmentation& found, Context context) {
    std::vector<SuggestedCharacter> result;
    for (const ReadLine& line : linesOf(found, Pieces::AsFound)) {
        std::vector<PatchLikelihoods> likelihoods;
        for (const ReadPiece& one : line.pieces) likelihoods.push_back(one.likelihoods);
        std::vector<std::size_t> best;
        if (context == Context::Used)
            best = likeliestTogether(likelihoods);
        else
            std::transform(likelihoods.begin(), likelihoods.end(), std::back_inserter(best), likeliestAlone);
        for (std::size_t i = 0; i < best.size(); ++i) {
            result.push_back(suggestion(likelihoods[i], best[i]));
            result.back().place = found.place({line.pieces[i].piece, line.line});
            result.back().line = line.line;
        }
    }
    return result;
}

std::vector<CharacterLikelihood> compareWithText(const Segmentation& found,
                                                 std::span<const std::string> text) {
    if (text.size() != found.glyphs.size()) return {};
    std::vector<CharacterLikelihood> result;
    const auto agreement = [&](std::span<const PatchLikelihoods> line, std::size_t from) {
        double sum = 0;
        for (const PatchLikelihoods& one : line)
            if (const std::optional<std::size_t> place = recognisedPlace(text[from++]))
                sum += std::max(std::log(kLeastWhole), static_cast<double>(one[*place]));
        return sum;
    };
    for (const ReadLine& line : linesOf(found, Pieces::AsFound, agreement))
        for (const ReadPiece& read : line.pieces) {
            const PatchLikelihoods& of = read.likelihoods;
            CharacterLikelihood& one = result.emplace_back();
            one.expected = text[result.size() - 1];
            const std::size_t best = likeliestAlone(of);
            one.likeliest = {std::string(1, kRecognisedCharacters[best]),
                             std::exp(static_cast<double>(of[best]))};
            if (const std::optional<std::size_t> place = recognisedPlace(one.expected)) {
                one.isKnown = true;
                one.likelihood = std::exp(static_cast<double>(of[*place]));
            }
        }
    return result;
}

}  // namespace dravik::engine
