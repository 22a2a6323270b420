#include "engine/recogniser/LineLattice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "engine/segmentation/CharacterCuts.h"
#include "engine/segmentation/LineCharacters.h"

namespace dravik::engine {
namespace {

// A character that is surer than this to be one is left alone.
constexpr float kSure = 0.9f;
// The following numbers were judged by `tools/bench.sh evaluate count` on develop and develop2.
// By how much surer, as a logarithm, other pieces must be than those that were found: for each cut, and one
// at the side of a stroke or anywhere.
constexpr float kCutDoubt = 1, kSideDoubt = 1.5f;
// What is a clear character, and the least share of them in a line: in one of fewer any pieces would look
// like characters.
constexpr float kClear = 0.5f, kFewestClear = 0.3f;
// What is as high as a character, at most so wide and stands on the line may be one that the recogniser does
// not know, and so is never dirt; sizes in heights of capitals.
constexpr float kLeastHigh = 0.6f, kMostHigh = 1.4f, kLeastWide = 0.15f, kMostWide = 1.1f,
                kOffBaseline = 0.3f;
// Cuts less likely than this (log odds) are not tried, and no more than so many of one piece.
constexpr double kLeastCut = -5;
constexpr std::size_t kMostCuts = 4;
// Into so many equal parts a piece is cut at most; cuts are at least so far apart, in heights of capitals.
constexpr int kMostEqual = 6;
constexpr float kCutsApart = 0.1f;
// Pieces that are wider, in heights of capitals, are cut at the sides of strokes too, when these differ that
// much in height and are so far from other cuts.
constexpr float kWideForSides = 0.4f, kStrokeRise = 0.2f, kSidesApart = 0.06f;
constexpr std::size_t kMostJoined = kMostCuts + 1;
// Pieces as wide, in heights of capitals, may be cut everywhere, in such steps, and so many of them are
// joined.
constexpr float kLeastCutWidth = 0.3f, kEverywhere = 0.08f;
constexpr std::size_t kMostStepsJoined = 12;
// Joined pieces stand no further apart and are no wider, as parts of the height of capitals.
constexpr float kMostRoom = 0.3f, kMostWidth = 1.5f;

struct CutPlace {
    float along, doubt;
};

// Where a piece may be cut: at its likeliest narrow places and, where it is as wide as several characters of
// the line, between equal ones, since strokes that touch along their height leave no narrow place; and where
// a stroke begins or ends.
std::vector<CutPlace> cutPlaces(const Piece& piece, const Frame& frame, const LineScale& scale, Cuts cuts) {
    std::vector<std::pair<double, float>> narrow;
    for (const PossibleCut& one : possibleCuts(piece, frame, scale))
        if (const double odds = kCutLikeness(one.traits); odds > kLeastCut)
            narrow.emplace_back(-odds, one.along);
    std::sort(narrow.begin(), narrow.end());
    narrow.resize(std::min(narrow.size(), kMostCuts));
    std::vector<CutPlace> places;
    places.reserve(narrow.size());
    for (const auto& [odds, along] : narrow) places.push_back({along, kCutDoubt});
    const auto add = [&](const CutPlace& one, float apart) {
        if (std::none_of(places.begin(), places.end(), [&](const CutPlace& place) {
                return std::abs(place.along - one.along) < apart * scale.capHeight;
            }))
            places.push_back(one);
    };
    if (piece.box.width() > kWideForSides * scale.capHeight)
        for (const float along : strokeSides(piece, frame, scale, kStrokeRise))
            add({along, kSideDoubt}, kSidesApart);
    const float usual = scale.pitch > 0 ? scale.pitch : scale.usualWidth;
    const int parts = std::min(kMostEqual, static_cast<int>(std::lround(piece.box.width() / usual)));
    for (int i = 1; i < parts; ++i)
        add({piece.box.left + piece.box.width() * static_cast<float>(i) / static_cast<float>(parts),
             kCutDoubt},
            kCutsApart);
    const float step = kEverywhere * scale.capHeight;
    if (cuts == Cuts::Everywhere && piece.box.width() > kLeastCutWidth * scale.capHeight)
        for (float along = piece.box.left + step; along < piece.box.right - 0.5f * step; along += step)
            add({along, kSideDoubt}, kSidesApart);
    std::sort(places.begin(), places.end(),
              [](const CutPlace& a, const CutPlace& b) { return a.along < b.along; });
    return places;
}

}  // namespace

std::vector<Atom> atomsOf(const Segmentation& found, std::size_t from, std::size_t to,
                          const std::vector<bool>& doubtful, const LineMetrics& line, Cuts cuts) {
    std::vector<Piece> pieces;
    for (std::size_t i = from; i < to; ++i) pieces.push_back(found.glyphs[i].piece);
    const LineScale scale = lineScale(pieces, line, characterPitch(pieces, line.capHeight));
    std::vector<Atom> atoms;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Piece rest = std::move(pieces[i]);
        float before = 0;
        for (const CutPlace& place :
             doubtful[i] ? cutPlaces(rest, found.frame, scale, cuts) : std::vector<CutPlace>()) {
            auto [left, right] = cut(rest, found.frame, place.along);
            if (left.area == 0 || right.area == 0) continue;
            left.measure(found.frame);
            right.measure(found.frame);
            atoms.push_back({std::move(left), i, std::exchange(before, place.doubt)});
            rest = std::move(right);
        }
        atoms.push_back({std::move(rest), i, before});
    }
    return atoms;
}

std::vector<Span> spansOf(const std::vector<Atom>& atoms, const std::vector<bool>& doubtful,
                          const Frame& frame, float cap, Cuts cuts) {
    const std::size_t mostAtoms = cuts == Cuts::Everywhere ? kMostStepsJoined : kMostJoined;
    std::vector<Span> spans;
    for (std::size_t first = 0; first < atoms.size(); ++first) {
        Piece piece = atoms[first].piece;
        for (std::size_t end = first + 1;; ++end) {
            const std::size_t from = atoms[first].character, to = atoms[end - 1].character;
            const bool begins = first == 0 || atoms[first - 1].character != from;
            const bool ends = end == atoms.size() || atoms[end].character != to;
            Span& span = spans.emplace_back();
            span.first = first;
            span.end = end;
            span.piece = piece;
            span.asFound = from == to && begins && ends;
            span.doubt = kJoinDoubt * static_cast<float>(to - from) +
                         0.5f * (atoms[first].doubt + (ends ? 0 : atoms[end].doubt));
            if (end == atoms.size()) break;
            const Atom& next = atoms[end];
            const bool another = next.character != to;
            if (end - first >= mostAtoms && next.character != from) break;
            if (another && !(doubtful[to] || doubtful[next.character])) break;
            if (next.piece.box.left - piece.box.right > kMostRoom * cap) break;
            if (std::max(piece.box.right, next.piece.box.right) - piece.box.left > kMostWidth * cap &&
                another)
                break;
            piece.join(Piece(next.piece));
            piece.measure(frame);
        }
    }
    return spans;
}

bool isCharacterSized(const Box& box, const LineMetrics& line) {
    const float cap = line.capHeight;
    return box.height() > kLeastHigh * cap && box.height() < kMostHigh * cap &&
           box.width() > kLeastWide * cap && box.width() < kMostWide * cap &&
           std::abs(box.bottom - line.baseline) < kOffBaseline * cap;
}

float whole(const PatchLikelihoods& likelihoods) {
    return *std::max_element(likelihoods.begin(), likelihoods.end() - 1);
}

std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first, const LineMetrics& line) {
    std::vector<bool> doubtful;
    bool any = false;
    std::size_t clear = 0;
    for (const PatchLikelihoods& one : first) {
        doubtful.push_back(whole(one) < std::log(kSure) && std::exp(one[kNoCharacter]) > 0.5f * (1 - kSure));
        any = any || doubtful.back();
        clear += whole(one) > std::log(kClear) ? 1 : 0;
    }
    std::vector<ReadPiece> result;
    if (!any || static_cast<float>(clear) < kFewestClear * static_cast<float>(first.size())) {
        for (std::size_t i = 0; i < first.size(); ++i)
            result.push_back({found.glyphs[from + i].piece, first[i]});
        return result;
    }
    const std::vector<Atom> atoms = atomsOf(found, from, from + first.size(), doubtful, line, Cuts::Likely);
    std::vector<Span> spans = spansOf(atoms, doubtful, found.frame, line.capHeight, Cuts::Likely);
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
    std::vector<Way> ways(atoms.size() + 1);
    ways[0].value = 0;
    for (const Span& span : spans) {
        const float before = ways[span.first].value;
        Way& way = ways[span.end];
        const float unknown = span.asFound && isCharacterSized(span.piece.box, line) ? kUnknown : kNever;
        const float likely = std::max(unknown, whole(span.likelihoods));
        if (const float value = before + likely - span.doubt; value > way.value) way = {value, &span, false};
        if (span.asFound)
            if (const float value = before + span.likelihoods[kNoCharacter] - kDirtDoubt; value > way.value)
                way = {value, &span, true};
    }
    float dirt = 0;
    for (std::size_t at = atoms.size(); at > 0; at = ways[at].last->first) {
        const Span& last = *ways[at].last;
        if (ways[at].isDirt)
            dirt += kDirtDoubt;
        else
            result.push_back({last.piece, last.likelihoods, last.doubt + std::exchange(dirt, 0.0f)});
    }
    if (!result.empty()) result.back().doubt += dirt;
    std::reverse(result.begin(), result.end());
    return result;
}

}  // namespace dravik::engine
