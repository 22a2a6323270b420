#include "engine/segmentation/CellGrid.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace dravik::engine {
namespace {

constexpr float kNarrowest = 0.5f, kWidest = 1.3f;  // of a cell, in heights of capitals
constexpr int kFewestCells = 4, kMostCells = 80;
constexpr float kWidestPiece = 1.1f;  // in pitches
// Ink on the borders against the mean; distance of the characters' middles from the cells', in pitches.
constexpr float kMostBorderInk = 0.08f, kMostOff = 0.11f;
// Shifts whose borders have so little more ink are as good.
constexpr float kAlike = 0.02f;

// Ink pixels at each place along a line.
struct Profile {
    float left = 0;
    std::vector<float> ink;

    Profile(const std::vector<Piece>& pieces, const Frame& frame) {
        float right = -1e9f;
        left = 1e9f;
        for (const Piece& piece : pieces) {
            left = std::min(left, piece.box.left);
            right = std::max(right, piece.box.right);
        }
        if (right <= left) return;
        left -= 2;
        ink.assign(static_cast<std::size_t>(right - left) + 5, 0);
        for (const Piece& piece : pieces)
            for (const Run& run : piece.runs) {
                const float from =
                    frame.along(static_cast<float>(run.x0), static_cast<float>(run.y) + 0.5f) - left;
                const std::size_t first = static_cast<std::size_t>(std::max(0.0f, from + 0.5f));
                const std::size_t end =
                    std::min(ink.size(), first + static_cast<std::size_t>(run.x1 - run.x0));
                for (std::size_t x = first; x < end; ++x) ink[x] += 1;
            }
    }
    float at(float place) const {
        const std::ptrdiff_t x = static_cast<std::ptrdiff_t>(place - left);
        return x < 0 || x >= static_cast<std::ptrdiff_t>(ink.size()) ? 0 : ink[static_cast<std::size_t>(x)];
    }
    // Least ink within a pixel of each place.
    Profile clearest() const {
        Profile result = *this;
        for (std::size_t x = 1; x + 1 < ink.size(); ++x)
            result.ink[x] = std::min({ink[x - 1], ink[x], ink[x + 1]});
        return result;
    }
};

struct Trial {
    CellGrid grid;
    float cost = 1e9f;
};

// How far the ink of the cells stands from their middles, in pitches; large when too few cells have a
// character.
float offness(const Profile& profile, const CellGrid& grid) {
    float sum = 0;
    int characters = 0;
    const int cells = static_cast<int>(static_cast<float>(profile.ink.size()) / grid.pitch) + 2;
    for (int cell = 0; cell < cells; ++cell) {
        const float from = grid.origin + grid.pitch * static_cast<float>(cell);
        float first = -1, last = -1;
        for (float x = from + 1; x < from + grid.pitch - 1; x += 1)
            if (profile.at(x) > 0) {
                if (first < 0) first = x;
                last = x + 1;
            }
        if (last - first < 0.35f * grid.pitch) continue;
        sum += std::abs(0.5f * (first + last) - from - 0.5f * grid.pitch) / grid.pitch;
        ++characters;
    }
    return characters < kFewestCells ? 1 : sum / static_cast<float>(characters);
}

}  // namespace

std::optional<CellGrid> findGrid(const std::vector<Piece>& pieces, const Frame& frame, float capHeight) {
    const Profile profile(pieces, frame);
    if (profile.ink.empty()) return std::nullopt;
    const float first = profile.left + 2, last = profile.left + static_cast<float>(profile.ink.size()) - 3;
    const float length = last - first;
    float mean = 0;
    int inked = 0;
    for (const float ink : profile.ink) {
        mean += ink;
        inked += ink > 0;
    }
    mean /= static_cast<float>(std::max(1, inked));
    const float most = length / (kNarrowest * capHeight);
    if (most < kFewestCells || most > kMostCells) return std::nullopt;
    const float step = 1 + std::min(0.01f, 0.12f / most);
    const Profile clear = profile.clearest();
    const float* const ink = clear.ink.data();
    std::vector<Trial> trials;
    std::vector<float> costs;
    for (float pitch = kNarrowest * capHeight; pitch < kWidest * capHeight; pitch *= step) {
        if (length < (kFewestCells - 0.7f) * pitch) break;
        // The middle of the longest stretch of shifts at which the borders are clear.
        float cheapest = 1e9f;
        costs.clear();
        const float from = first + 0.3f * pitch, to = last - 0.3f * pitch;
        // More ink than this is too much, however little the borders that follow have.
        const float tooMuch = 1.01f * (kMostBorderInk + kAlike) * mean * ((to - from) / pitch + 1.01f);
        for (float shift = 0; shift < pitch; shift += 1) {
            float sum = 0, count = 0;
            float border = first - pitch + shift;
            while (border < from) border += pitch;
            for (; border <= to && sum <= tooMuch; border += pitch) {
                sum += ink[static_cast<std::ptrdiff_t>(border - clear.left)];
                count += 1;
            }
            costs.push_back(count < kFewestCells - 1 || sum > tooMuch ? 1e9f : sum / (count * mean));
            cheapest = std::min(cheapest, costs.back());
        }
        if (cheapest > kMostBorderInk) continue;
        std::size_t longest = 0, stretch = 0, start = 0;
        for (std::size_t i = 0; i < 2 * costs.size(); ++i) {
            if (costs[i < costs.size() ? i : i - costs.size()] > cheapest + kAlike) {
                start = i + 1;
            } else if (i + 1 - start > stretch) {
                stretch = i + 1 - start;
                longest = start;
            }
        }
        const float shift =
            static_cast<float>(longest) + 0.5f * static_cast<float>(std::min(stretch, costs.size()) - 1);
        const CellGrid grid{pitch, first - pitch + std::fmod(shift, pitch)};
        const Trial best{grid, cheapest + offness(profile, grid)};
        if (best.cost < kMostOff + 0.5f * kMostBorderInk) trials.push_back(best);
    }
    if (trials.empty()) return std::nullopt;
    float least = 1e9f;
    for (const Trial& trial : trials) least = std::min(least, trial.cost);
    // A multiple of the pitch fits as well as the pitch itself: take the smallest that fits well, and the
    // best near it.
    const auto good = std::find_if(trials.begin(), trials.end(), [least](const Trial& trial) {
        return trial.cost <= 1.5f * least + 0.02f;
    });
    Trial chosen = *good;
    for (auto trial = good; trial != trials.end() && trial->grid.pitch < 1.15f * good->grid.pitch; ++trial)
        if (trial->cost < chosen.cost) chosen = *trial;
    return chosen.grid;
}

bool joinsNever(const std::vector<Piece>& pieces, float capHeight) {
    return std::any_of(pieces.begin(), pieces.end(), [capHeight](const Piece& piece) {
        return piece.box.width() > kWidestPiece * (kWidest * capHeight);
    });
}

bool joinsFragmentsOnly(const std::vector<Piece>& pieces, const CellGrid& grid, float capHeight) {
    std::map<int, std::pair<Box, float>> cells;  // what is in them, the highest piece
    std::map<int, int> counts;
    for (const Piece& piece : pieces) {
        if (piece.box.width() > kWidestPiece * grid.pitch) return false;
        const int cell = static_cast<int>(std::floor((piece.box.middleX() - grid.origin) / grid.pitch));
        if (++counts[cell] == 1) {
            cells[cell] = {piece.box, piece.box.height()};
            continue;
        }
        auto& [box, highest] = cells[cell];
        box.include(piece.box);
        highest = std::max(highest, piece.box.height());
    }
    for (const auto& [cell, count] : counts)
        if (count > 1 && cells[cell].first.height() < cells[cell].second + 0.12f * capHeight) return false;
    return true;
}

}  // namespace dravik::engine
