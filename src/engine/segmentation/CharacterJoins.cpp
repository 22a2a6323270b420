#include "engine/segmentation/CharacterJoins.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dravik::engine {
namespace {

constexpr int kMostRounds = 4;
// How far ahead, in pieces of the line, a part of the same character is looked for: marks may stand between.
constexpr std::size_t kMostAhead = 3;

JoinTraits traitsOf(const std::vector<Piece>& pieces, std::size_t first, std::size_t second,
                    const LineScale& scale) {
    const float cap = scale.capHeight;
    const auto caps = [cap](float length) {
        return std::clamp(static_cast<double>(length / cap), -2.0, 2.0);
    };
    const Box &a = pieces[first].box, &b = pieces[second].box;
    const bool firstLarger = pieces[first].area >= pieces[second].area;
    const Box &larger = firstLarger ? a : b, &smaller = firstLarger ? b : a;
    Box both = a;
    both.include(b);
    float before = 2 * cap, after = 2 * cap;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i == first || i == second) continue;
        const Box& other = pieces[i].box;
        if (other.middleX() < both.middleX())
            before = std::min(before, both.left - other.right);
        else
            after = std::min(after, other.left - both.right);
    }
    const auto inPlace = [&](const Box& box) {
        return scale.pitch > 0
                   ? static_cast<double>(scale.evenness) *
                         std::cos(2 * std::numbers::pi *
                                  static_cast<double>((box.middleX() - scale.phase) / scale.pitch))
                   : 0.0;
    };
    const float shared = std::min(a.right, b.right) - std::max(a.left, b.left);
    const float apart = std::max(a.top, b.top) - std::min(a.bottom, b.bottom);
    const float reach = 0.35f * cap;
    return {caps(-shared),
            caps(apart),
            caps(inkDistance(pieces[first], pieces[second], reach)),
            caps(both.width()),
            caps(both.height()),
            caps(larger.width()),
            caps(larger.height()),
            caps(smaller.width()),
            caps(smaller.height()),
            caps(scale.baseline - larger.bottom),
            caps(scale.baseline - larger.top),
            caps(scale.baseline - smaller.bottom),
            caps(scale.baseline - smaller.top),
            std::min(4.0, static_cast<double>(both.width() / scale.usualWidth)),
            scale.pitch > 0 ? std::min(4.0, static_cast<double>(both.width() / scale.pitch)) : 0.0,
            scale.pitch > 0 ? static_cast<double>(scale.evenness) : 0.0,
            inPlace(both),
            inPlace(larger),
            inPlace(smaller),
            std::clamp(static_cast<double>(shared / std::min(a.width(), b.width())), -2.0, 1.0),
            caps(std::min(before, after)),
            caps(std::max(before, after)),
            std::abs(caps(a.height() - b.height())),
            std::abs(caps(a.top - b.top)),
            caps(scale.stroke),
            caps(scale.usualWidth)};
}

}  // namespace

void arrange(std::vector<Piece>& pieces) {
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
    for (Piece& piece : pieces)
        std::sort(piece.runs.begin(), piece.runs.end(), [](const Run& a, const Run& b) { return a.y < b.y; });
}

std::vector<PossibleJoin> possibleJoins(const std::vector<Piece>& pieces, const LineScale& scale) {
    const float reach = 0.4f * scale.capHeight;
    const float widest = std::max(1.4f * scale.capHeight, 1.1f * scale.pitch);
    std::vector<PossibleJoin> result;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t j = i + 1; j < std::min(pieces.size(), i + 1 + kMostAhead); ++j) {
            Box both = pieces[i].box;
            both.include(pieces[j].box);
            if (pieces[j].box.left - pieces[i].box.right < reach && both.width() < widest)
                result.push_back({i, j, traitsOf(pieces, i, j, scale)});
        }
    return result;
}

std::vector<Piece> joinParts(std::vector<Piece> pieces, const LineScale& scale, Decisions& decisions) {
    for (int round = 0; round < kMostRounds; ++round) {
        arrange(pieces);
        std::vector<std::pair<double, const PossibleJoin*>> likely;
        const std::vector<PossibleJoin> joins = possibleJoins(pieces, scale);
        for (const PossibleJoin& one : joins)
            if (const double odds = kJoinLikeness(one.traits); odds > 0) likely.emplace_back(odds, &one);
        if (likely.empty()) {
            for (const PossibleJoin& one : joins) decisions.decide(kJoinLikeness(one.traits));
            break;
        }
        std::sort(likely.begin(), likely.end(), [](const auto& a, const auto& b) {
            return a.first != b.first ? a.first > b.first : a.second->first < b.second->first;
        });
        // The likeliest first; what they make is looked at anew before it is joined further.
        std::vector<bool> taken(pieces.size());
        Partition partition(pieces.size());
        for (const auto& [odds, one] : likely) {
            if (taken[one->first] || taken[one->second]) continue;
            taken[one->first] = taken[one->second] = true;
            decisions.decide(odds);
            partition.unite(one->first, one->second);
        }
        pieces = joined(std::move(pieces), partition);
    }
    arrange(pieces);
    return pieces;
}

}  // namespace dravik::engine
