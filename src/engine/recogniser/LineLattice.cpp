#include "engine/recogniser/LineLattice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "engine/image/Median.h"

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
// A piece that is likelier than this to be no character is cut in small steps too: the network sees no
// boundary where it does not know the shapes that touch.
constexpr float kSurelyNone = 0.8f;
constexpr float kDirtDoubt = 4;
// What stands aside and is not as high as a character, or not on the line, is dirt more readily.
constexpr float kDirtAsideDoubt = 0.5f;
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

std::vector<Atom> atomsOf(const Frame& frame, std::span<const Glyph> line, std::span<const Cuts> cuts,
                          const LineBoundaries& boundaries, float cap) {
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
        if (cuts[i] != Cuts::None)
            for (const CutPlace& place : cutPlaces(rest.box, boundaries, cap, cuts[i])) {
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
    std::vector<float> gaps;
    for (std::size_t i = 1; i < glyphs.size(); ++i)
        gaps.push_back(glyphs[i].piece.box.left - glyphs[i - 1].piece.box.right);
    const float aside = std::max(kAside * line.capHeight, kAsideGaps * median(std::move(gaps)));
    const auto fromEnd = [&](auto place) {
        for (std::size_t i = 0; i + 1 < glyphs.size(); ++i) {
            const Box &box = glyphs[place(i)].piece.box, &next = glyphs[place(i + 1)].piece.box;
            const float room = std::max(next.left - box.right, box.left - next.right);
            if (room < aside || isCharacterHigh(box, line)) break;
            result[place(i)] = kDirtAsideDoubt;
        }
    };
    fromEnd([](std::size_t i) { return i; });
    fromEnd([last = glyphs.size() - 1](std::size_t i) { return last - i; });
    return result;
}

// A line whose characters were found as `glyphs` and read as `first`.
class Lattice {
  public:
    Lattice(const Segmentation& found, std::span<const Glyph> glyphs, std::span<const PatchLikelihoods> first,
            const LineBoundaries& boundaries, const LineMetrics& line);

    // Whether one of the characters may be another than was found.
    bool isDoubtful() const;
    // Those of the likeliest way through the line.
    std::vector<ReadPiece> likeliest();
    // From now on what `pieces` have for no character is cut in small steps; returns whether there is any.
    bool cutEverywhere(std::span<const ReadPiece> pieces);

  private:
    // The best way to a place between atoms, by the value of its pieces.
    struct Way {
        float value = -std::numeric_limits<float>::max();
        std::size_t last = 0;  // span
        bool isDirt = false;
    };

    std::vector<Way> waysThrough(const std::vector<Span>& spans, std::size_t atoms) const;
    bool readSome(std::vector<Span>& spans, const std::vector<Way>& ways) const;

    const Segmentation& found_;
    const std::span<const Glyph> glyphs_;
    const std::span<const PatchLikelihoods> first_;
    const LineMetrics& line_;
    const LineBoundaries& boundaries_;
    std::vector<bool> doubtful_;
    std::vector<Cuts> cuts_;
    std::vector<float> dirtDoubts_;
    std::vector<Atom> atoms_;
};

Lattice::Lattice(const Segmentation& found, std::span<const Glyph> glyphs,
                 std::span<const PatchLikelihoods> first, const LineBoundaries& boundaries,
                 const LineMetrics& line)
    : found_(found),
      glyphs_(glyphs),
      first_(first),
      line_(line),
      boundaries_(boundaries),
      cuts_(glyphs.size(), Cuts::None) {
    for (std::size_t i = 0; i < first.size(); ++i) {
        const Box& box = glyphs[i].piece.box;
        const bool isApart = i == 0 || boundaries_.between(glyphs[i - 1].piece.box.right, box.left) >= 0;
        doubtful_.push_back(isUnsure(first[i]) || !isApart ||
                            !boundaries_.inside(box, kLeastBoundary).empty());
        if (!isApart) doubtful_[i - 1] = true;
    }
    for (std::size_t i = 0; i < first.size(); ++i)
        if (doubtful_[i]) cuts_[i] = Cuts::Likely;
}

bool Lattice::isDoubtful() const {
    return boundaries_.isKnown() &&
           std::any_of(doubtful_.begin(), doubtful_.end(), [](bool doubtful) { return doubtful; });
}

// What is not read yet counts as surely whole.
std::vector<Lattice::Way> Lattice::waysThrough(const std::vector<Span>& spans, std::size_t atoms) const {
    std::vector<Way> ways(atoms + 1);
    ways[0].value = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const Span& span = spans[i];
        const float before = ways[span.first].value;
        Way& way = ways[span.end];
        float likely = 0;
        if (span.isRead) {
            likely = whole(span.likelihoods);
            if (isCharacterSized(span.piece.box, line_)) {
                if (span.doubt <= kHardlyDoubted)
                    likely = std::max(likely, kUnknownAlone);
                else if (span.asFound)
                    likely = std::max(likely, kUnknown);
            }
        }
        if (const float value = before + likely - span.doubt; value > way.value) way = {value, i, false};
        if (span.asFound)
            if (const float value =
                    before + span.likelihoods[kNoCharacter] - dirtDoubts_[atoms_[span.first].character];
                value > way.value)
                way = {value, i, true};
    }
    return ways;
}

// Reads what is not read yet on the best way to the end; returns whether there was any.
bool Lattice::readSome(std::vector<Span>& spans, const std::vector<Way>& ways) const {
    std::vector<CharacterPatch> patches;
    std::vector<Span*> unread;
    for (std::size_t at = ways.size() - 1; at > 0; at = spans[ways[at].last].first)
        if (Span& span = spans[ways[at].last]; !span.isRead) {
            patches.push_back(characterPatch(found_.ink, found_.frame, span.piece, line_));
            unread.push_back(&span);
        }
    const std::vector<PatchLikelihoods> likelihoods = patchLikelihoods(patches);
    for (std::size_t i = 0; i < unread.size(); ++i) {
        unread[i]->likelihoods = likelihoods[i];
        unread[i]->isRead = true;
    }
    return !unread.empty();
}

std::vector<ReadPiece> Lattice::likeliest() {
    dirtDoubts_ = dirtDoubts(glyphs_, boundaries_, line_);
    atoms_ = atomsOf(found_.frame, glyphs_, cuts_, boundaries_, line_.capHeight);
    std::vector<Span> spans = spansOf(atoms_, doubtful_, found_.frame, line_.capHeight);
    for (Span& span : spans)
        if (span.asFound) {
            span.likelihoods = first_[atoms_[span.first].character];
            span.isRead = true;
        }
    std::vector<Way> ways;
    do ways = waysThrough(spans, atoms_.size());
    while (readSome(spans, ways));

    std::vector<ReadPiece> result;
    float dirt = 0;
    for (std::size_t at = atoms_.size(); at > 0; at = spans[ways[at].last].first) {
        const Span& last = spans[ways[at].last];
        if (ways[at].isDirt)
            dirt += dirtDoubts_[atoms_[last.first].character];
        else
            result.push_back({last.piece, last.likelihoods, last.doubt + std::exchange(dirt, 0.0f)});
    }
    if (!result.empty()) result.back().doubt += dirt;
    std::reverse(result.begin(), result.end());
    return result;
}

bool Lattice::cutEverywhere(std::span<const ReadPiece> pieces) {
    bool any = false;
    for (const ReadPiece& one : pieces) {
        if (std::exp(one.likelihoods[kNoCharacter]) < kSurelyNone) continue;
        for (std::size_t i = 0; i < glyphs_.size(); ++i) {
            const Box &box = glyphs_[i].piece.box, &piece = one.piece.box;
            const bool isPart = std::min(box.right, piece.right) - std::max(box.left, piece.left) >
                                0.5f * std::min(box.width(), piece.width());
            if (cuts_[i] == Cuts::Likely && isPart) {
                cuts_[i] = Cuts::Everywhere;
                any = true;
            }
        }
    }
    return any;
}

}  // namespace

bool isUnsure(const PatchLikelihoods& likelihoods) {
    return whole(likelihoods) < std::log(kSure) && std::exp(likelihoods[kNoCharacter]) > 0.5f * (1 - kSure);
}

std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first,
                                       const LineBoundaries& boundaries, const LineMetrics& line) {
    const std::span<const Glyph> glyphs = std::span(found.glyphs).subspan(from, first.size());
    Lattice lattice(found, glyphs, first, boundaries, line);
    std::vector<ReadPiece> result;
    if (!lattice.isDoubtful()) {
        for (std::size_t i = 0; i < first.size(); ++i) result.push_back({glyphs[i].piece, first[i]});
        return result;
    }
    result = lattice.likeliest();
    return lattice.cutEverywhere(result) ? lattice.likeliest() : result;
}

}  // namespace dravik::engine
