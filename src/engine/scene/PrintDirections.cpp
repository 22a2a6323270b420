#include "engine/scene/PrintDirections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace dravik::engine {
namespace {

constexpr float kRadian = 57.29578f;

// Neighbours within reach, by a grid of cells.
class Neighbourhood {
  public:
    Neighbourhood(std::span<const Piece> pieces, int width, int height)
        : pieces_(pieces),
          across_(width / kCell + 1),
          cells_(static_cast<std::size_t>(across_) * static_cast<std::size_t>(height / kCell + 1)) {
        for (std::size_t i = 0; i < pieces.size(); ++i)
            cells_[cellOf(pieces[i].box.middleX(), pieces[i].box.middleY())].push_back(i);
    }

    template <typename Visit>
    void around(std::size_t piece, float reach, Visit visit) const {
        const Box& box = pieces_[piece].box;
        const int rows = static_cast<int>(cells_.size()) / across_;
        const auto cell = [](float place, int most) {
            return std::clamp(static_cast<int>(place) / kCell, 0, most - 1);
        };
        for (int r = cell(box.middleY() - reach, rows); r <= cell(box.middleY() + reach, rows); ++r)
            for (int c = cell(box.middleX() - reach, across_); c <= cell(box.middleX() + reach, across_); ++c)
                for (const std::size_t other : cells_[static_cast<std::size_t>(r * across_ + c)])
                    if (other != piece) visit(other);
    }

  private:
    static constexpr int kCell = 24;
    std::size_t cellOf(float x, float y) const {
        return static_cast<std::size_t>(static_cast<int>(y) / kCell * across_ + static_cast<int>(x) / kCell);
    }

    std::span<const Piece> pieces_;
    int across_;
    std::vector<std::vector<std::size_t>> cells_;
};

}  // namespace

float extent(const Piece& piece) {
    return std::max(piece.box.width(), piece.box.height());
}

std::vector<float> printDirections(std::span<const Piece> pieces, int width, int height, float leastSize) {
    constexpr int kMost = 48, kBins = 2 * kMost + 1;  // degrees
    constexpr std::size_t kNearest = 3;
    std::array<float, kBins> votes{};
    const Neighbourhood neighbours(pieces, width, height);
    std::vector<std::pair<float, std::size_t>> near;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Box& box = pieces[i].box;
        const float size = extent(pieces[i]);
        if (size < leastSize) continue;
        near.clear();
        neighbours.around(i, 2.4f * size, [&](std::size_t other) {
            const float ratio = extent(pieces[other]) / size;
            const float distance = std::hypot(pieces[other].box.middleX() - box.middleX(),
                                              pieces[other].box.middleY() - box.middleY());
            if (ratio > 0.55f && ratio < 1.8f && distance < 2.4f * size) near.emplace_back(distance, other);
        });
        std::sort(near.begin(), near.end());
        for (std::size_t k = 0; k < std::min(near.size(), kNearest); ++k) {
            const Box& other = pieces[near[k].second].box;
            // Bottoms and middles vary with the characters, so both give a vote.
            for (const bool middles : {true, false}) {
                float dx = other.middleX() - box.middleX();
                float dy = middles ? other.middleY() - box.middleY() : other.bottom - box.bottom;
                if (dx < 0) {
                    dx = -dx;
                    dy = -dy;
                }
                const float angle = std::atan2(dy, dx);
                if (std::abs(angle) > kSteepestPrint) continue;
                votes[static_cast<std::size_t>(std::lround(angle * kRadian) + kMost)] += 1;
            }
        }
    }
    std::array<float, kBins> smooth{};
    for (int i = 0; i < kBins; ++i)
        for (int k = -4; k <= 4; ++k)
            if (i + k >= 0 && i + k < kBins)
                smooth[static_cast<std::size_t>(i)] +=
                    votes[static_cast<std::size_t>(i + k)] * static_cast<float>(5 - std::abs(k));
    std::vector<float> result;
    for (int peak = 0; peak < 3; ++peak) {
        const auto best = std::max_element(smooth.begin(), smooth.end());
        if (*best < 8) break;
        const int place = static_cast<int>(best - smooth.begin());
        result.push_back(static_cast<float>(place - kMost) / kRadian);
        for (int k = std::max(0, place - 8); k <= std::min(kBins - 1, place + 8); ++k)
            smooth[static_cast<std::size_t>(k)] = 0;
    }
    return result;
}

}  // namespace dravik::engine
