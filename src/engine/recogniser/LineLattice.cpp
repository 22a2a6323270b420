#include "engine/recogniser/LineLattice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace dravik::engine {
namespace {

// A character that is surer than this to be one is left alone.
constexpr float kSure = 0.9f;
// The following numbers were judged by `tools/bench.sh evaluate count` on develop and develop2.
// By how much surer, as a logarithm, other pieces must be than those that were found: for each cut where the
// network sees a boundary, and for one anywhere.
constexpr float kCutDoubt = 0.5f, kAnywhereDoubt = 1.5f;
// The odds of boundaries count by this part, and so much at most.
constexpr float kBoundaryShare = 0.7f, kMostAgainst = 4;
// Where a boundary has such log odds a piece may be cut.
constexpr float kLeastBoundary = -1.5f;
constexpr float kDirtDoubt = 4;
// What stands so far, in heights of capitals, from the rest at an end of a line and is not as high as a
// character, or not on the line, is dirt more readily.
constexpr float kAside = 0.4f, kDirtAsideDoubt = 0.5f;
// What is as high as a character, at most so wide and stands on the line may be one that the recogniser does
// not know, and so is never dirt; sizes in heights of capitals.
constexpr float kLeastHigh = 0.6f, kMostHigh = 1.4f, kLeastWide = 0.15f, kMostWide = 1.1f,
                kOffBaseline = 0.3f;
// It is at least so likely one, as a logarithm, where its boundaries are doubted by no more than the second.
constexpr float kUnknownAlone = -2.3f, kHardlyDoubted = 1.1f;
// Pieces as wide, in heights of capitals, may be cut everywhere, in such steps, and so far from other cuts.
constexpr float kLeastCutWidth = 0.3f, kEverywhere = 0.08f, kCutsApart = 0.18f;
constexpr std::size_t kMostJoined = 5;
// Joined pieces stand no further apart and are no wider, as parts of the height of capitals.
constexpr float kMostRoom = 0.3f, kMostWidth = 1.5f;

// What it costs to do otherwise than such log odds say.
float against(float odds) {
    return std::clamp(kBoundaryShare * odds, 0.0f, kMostAgainst);
}

struct CutPlace {
    float along = 0;
    float boundary = 0, noBoundary = 0;  // what they cost
};

// Where a piece may be cut.
std::vector<CutPlace> cutPlaces(const Box& piece, const LineBoundaries& boundaries, float cap, Cuts cuts) {
    std::vector<CutPlace> places;
    for (const Boundary& one : boundaries.inside(piece, kLeastBoundary))
        places.push_back({one.along, kCutDoubt + against(-one.odds), against(one.odds)});
    const float step = kEverywhere * cap;
    if (cuts == Cuts::Everywhere && piece.width() > kLeastCutWidth * cap)
        for (float along = piece.left + step; along < piece.right - 0.5f * step; along += step)
            if (std::none_of(places.begin(), places.end(), [&](const CutPlace& place) {
                    return place.noBoundary > 0 && std::abs(place.along - along) < kCutsApart * cap;
                }))
                places.push_back({along, kAnywhereDoubt, 0});
    std::sort(places.begin(), places.end(),
              [](const CutPlace& a, const CutPlace& b) { return a.along < b.along; });
    return places;
}

// Whether it is about as high as a character and stands on the line.
bool isCharacterHigh(const Box& box, const LineMetrics& line) {
    const float cap = line.capHeight;
    return box.height() > kLeastHigh * cap && box.height() < kMostHigh * cap &&
           std::abs(box.bottom - line.baseline) < kOffBaseline * cap;
}

}  // namespace

std::vector<Atom> atomsOf(const Frame& frame, std::span<const Glyph> line, const std::vector<bool>& doubtful,
                          const LineBoundaries& boundaries, float cap, Cuts cuts) {
    std::vector<Atom> atoms;
    for (std::size_t i = 0; i < line.size(); ++i) {
        Piece rest = line[i].piece;
        CutPlace before;
        if (i > 0) {
            const float odds = boundaries.between(line[i - 1].piece.box.right, rest.box.left);
            before = {0, against(-odds), kJoinDoubt + against(odds)};
        }
        const auto add = [&](Piece&& piece) {
            atoms.push_back({std::move(piece), i, before.boundary, before.noBoundary});
        };
        if (doubtful[i])
            for (const CutPlace& place : cutPlaces(rest.box, boundaries, cap, cuts)) {
                auto [left, right] = cut(rest, frame, place.along);
                if (left.area == 0 || right.area == 0) continue;
                left.measure(frame);
                right.measure(frame);
                add(std::move(left));
                before = place;
                rest = std::move(right);
            }
        add(std::move(rest));
    }
    return atoms;
}

std::vector<Span> spansOf(const std::vector<Atom>& atoms, const std::vector<bool>& doubtful,
                          const Frame& frame, float cap) {
    std::vector<Span> spans;
    for (std::size_t first = 0; first < atoms.size(); ++first) {
        Piece piece = atoms[first].piece;
        float doubt = atoms[first].boundary;
        for (std::size_t end = first + 1;; ++end) {
            const std::size_t from = atoms[first].character, to = atoms[end - 1].character;
            const bool begins = first == 0 || atoms[first - 1].character != from;
            const bool ends = end == atoms.size() || atoms[end].character != to;
            Span& span = spans.emplace_back();
            span.first = first;
            span.end = end;
            span.piece = piece;
            span.asFound = from == to && begins && ends;
            span.doubt = doubt;
            if (end == atoms.size()) break;
            const Atom& next = atoms[end];
            const bool another = next.character != to;
            if (end - first >= kMostJoined && next.character != from) break;
            if (another && !(doubtful[to] || doubtful[next.character])) break;
            if (next.piece.box.left - piece.box.right > kMostRoom * cap) break;
            if (std::max(piece.box.right, next.piece.box.right) - piece.box.left > kMostWidth * cap &&
                another)
                break;
            piece.join(Piece(next.piece));
            piece.measure(frame);
            doubt += next.noBoundary;
        }
    }
    return spans;
}

bool isCharacterSized(const Box& box, const LineMetrics& line) {
    const float cap = line.capHeight;
    return isCharacterHigh(box, line) && box.width() > kLeastWide * cap && box.width() < kMostWide * cap;
}

float dirtDoubt(const LineBoundaries& boundaries, const Box& box) {
    return kDirtDoubt + against(-boundaries.mean(box.left, box.right));
}

float whole(const PatchLikelihoods& likelihoods) {
    return *std::max_element(likelihoods.begin(), likelihoods.end() - 1);
}

namespace {

// By how much surer other pieces must be than each of these, all of a line, so that it is left out.
std::vector<float> dirtDoubts(std::span<const Glyph> glyphs, const LineBoundaries& boundaries,
                              const LineMetrics& line) {
    std::vector<float> result;
    for (const Glyph& one : glyphs) result.push_back(dirtDoubt(boundaries, one.piece.box));
    const auto fromEnd = [&](auto place) {
        for (std::size_t i = 0; i + 1 < glyphs.size(); ++i) {
            const Box &box = glyphs[place(i)].piece.box, &next = glyphs[place(i + 1)].piece.box;
            const float room = std::max(next.left - box.right, box.left - next.right);
            if (room < kAside * line.capHeight || isCharacterHigh(box, line)) break;
            result[place(i)] = kDirtAsideDoubt;
        }
    };
    fromEnd([](std::size_t i) { return i; });
    fromEnd([last = glyphs.size() - 1](std::size_t i) { return last - i; });
    return result;
}

}  // namespace

bool isUnsure(const PatchLikelihoods& likelihoods) {
    return whole(likelihoods) < std::log(kSure) && std::exp(likelihoods[kNoCharacter]) > 0.5f * (1 - kSure);
}

std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first, const LineMetrics& line) {
    const std::span<const Glyph> glyphs = std::span(found.glyphs).subspan(from, first.size());
    const LineBoundaries boundaries(found.ink, found.frame, glyphs, line);
    std::vector<bool> doubtful;
    bool any = false;
    for (std::size_t i = 0; i < first.size(); ++i) {
        const Box& box = glyphs[i].piece.box;
        const bool isApart = i == 0 || boundaries.between(glyphs[i - 1].piece.box.right, box.left) >= 0;
        doubtful.push_back(isUnsure(first[i]) || !isApart || !boundaries.inside(box, kLeastBoundary).empty());
        if (!isApart) doubtful[i - 1] = true;
        any = any || doubtful.back();
    }
    std::vector<ReadPiece> result;
    if (!any || !boundaries.isKnown()) {
        for (std::size_t i = 0; i < first.size(); ++i) result.push_back({glyphs[i].piece, first[i]});
        return result;
    }
    const std::vector<Atom> atoms =
        atomsOf(found.frame, glyphs, doubtful, boundaries, line.capHeight, Cuts::Likely);
    std::vector<Span> spans = spansOf(atoms, doubtful, found.frame, line.capHeight);
    std::vector<CharacterPatch> patches;
    for (const Span& span : spans)
        if (!span.asFound) patches.push_back(characterPatch(found.ink, found.frame, span.piece, line));
    const std::vector<PatchLikelihoods> others = patchLikelihoods(patches);
    auto other = others.begin();
    for (Span& span : spans) span.likelihoods = span.asFound ? first[atoms[span.first].character] : *other++;

    // The best way to each place between atoms.
    constexpr float kNever = -std::numeric_limits<float>::max();
    struct Way {
        float value = kNever;
        const Span* last = nullptr;
        bool isDirt = false;
    };
    const std::vector<float> dirtDoubtOf = dirtDoubts(glyphs, boundaries, line);
    std::vector<Way> ways(atoms.size() + 1);
    ways[0].value = 0;
    for (const Span& span : spans) {
        const float before = ways[span.first].value;
        Way& way = ways[span.end];
        float unknown = kNever;
        if (isCharacterSized(span.piece.box, line))
            unknown = span.doubt <= kHardlyDoubted ? kUnknownAlone : span.asFound ? kUnknown : kNever;
        const float likely = std::max(unknown, whole(span.likelihoods));
        if (const float value = before + likely - span.doubt; value > way.value) way = {value, &span, false};
        if (span.asFound)
            if (const float value =
                    before + span.likelihoods[kNoCharacter] - dirtDoubtOf[atoms[span.first].character];
                value > way.value)
                way = {value, &span, true};
    }
    float dirt = 0;
    for (std::size_t at = atoms.size(); at > 0; at = ways[at].last->first) {
        const Span& last = *ways[at].last;
        if (ways[at].isDirt)
            dirt += dirtDoubtOf[atoms[last.first].character];
        else
            result.push_back({last.piece, last.likelihoods, last.doubt + std::exchange(dirt, 0.0f)});
    }
    if (!result.empty()) result.back().doubt += dirt;
    std::reverse(result.begin(), result.end());
    return result;
}

}  // namespace dravik::engine
