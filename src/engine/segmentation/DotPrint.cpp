#include "engine/segmentation/DotPrint.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "engine/image/RunLabels.h"
#include "engine/segmentation/TextLines.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kFewestDots = 12;
// More pieces than this are noise, not dots.
constexpr std::size_t kMostDots = 20'000;

float quantile(std::vector<float> values, double share) {
    if (values.empty()) return 0;
    const auto place =
        values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

float extent(const Box& box) {
    return std::max(box.width(), box.height());
}

// Usual diameter of the dots, 0 when the pieces are not mostly dots.
float dotSize(const std::vector<Piece>& pieces) {
    if (pieces.size() < kFewestDots || pieces.size() > kMostDots) return 0;
    std::vector<float> extents, fills, shapes;
    for (std::vector<float>* values : {&extents, &fills, &shapes}) values->reserve(pieces.size());
    for (const Piece& piece : pieces) {
        extents.push_back(extent(piece.box));
        fills.push_back(static_cast<float>(piece.area) / (piece.box.width() * piece.box.height()));
        shapes.push_back(piece.box.width() / piece.box.height());
    }
    const float size = quantile(extents, 0.5);
    const float shape = quantile(shapes, 0.5);
    const auto alike = std::count_if(extents.begin(), extents.end(),
                                     [size](float e) { return e > 0.6f * size && e < 1.7f * size; });
    // A dot has one run a row, which few characters have.
    const auto solid = std::count_if(pieces.begin(), pieces.end(), [](const Piece& piece) {
        return static_cast<float>(piece.runs.size()) < 1.2f * piece.box.height() + 1;
    });
    const bool uniform = static_cast<double>(alike) >= 0.6 * static_cast<double>(extents.size()) &&
                         static_cast<double>(solid) >= 0.85 * static_cast<double>(extents.size());
    return uniform && quantile(fills, 0.3) > 0.6f && shape > 0.6f && shape < 1.6f ? size : 0;
}

// Calls `visit` for every pair of pieces, sorted by their left edges, whose boxes are no farther apart than
// `reach` along the line.
template <typename Visit>
void forNeighbours(const std::vector<Piece>& pieces, float reach, Visit visit) {
    for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t j = i + 1; j < pieces.size(); ++j) {
            if (pieces[j].box.left - pieces[i].box.right > reach) break;
            visit(i, j);
        }
}

// Unites pieces whose pixels come within `reach` of each other.
Partition within(const std::vector<Piece>& pieces, float reach, int width, int height) {
    const float radius = 0.5f * reach;
    const int rows = static_cast<int>(radius);
    std::vector<int> sides;
    for (int dy = 0; dy <= rows; ++dy)
        sides.push_back(static_cast<int>(std::sqrt(radius * radius - static_cast<float>(dy * dy)) + 0.5f));
    // All runs by their rows.
    struct Stretch {
        std::uint16_t x0, x1;
    };
    std::vector<std::uint32_t> starts(static_cast<std::size_t>(height) + 1);
    for (const Piece& piece : pieces)
        for (const Run& run : piece.runs) ++starts[static_cast<std::size_t>(run.y)];
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), 0u);
    std::vector<Stretch> stretches(starts.back());
    for (const Piece& piece : pieces)
        for (const Run& run : piece.runs)
            stretches[starts[static_cast<std::size_t>(run.y)]++] = {run.x0, run.x1};
    // Each start has become that of the next row.
    const auto startOf = [&](int y) { return y > 0 ? starts[static_cast<std::size_t>(y - 1)] : 0; };
    std::vector<std::uint32_t> byFirstRun(pieces.size());
    std::iota(byFirstRun.begin(), byFirstRun.end(), 0u);
    const auto firstRow = [&pieces](std::uint32_t piece) { return pieces[piece].runs.front().y; };
    std::sort(byFirstRun.begin(), byFirstRun.end(),
              [&](std::uint32_t a, std::uint32_t b) { return firstRow(a) < firstRow(b); });

    // The ink grown by `radius`, one row at a time; a piece belongs to what grew from its first run.
    RunLabels labels;
    std::vector<std::uint32_t> ofPieces(pieces.size());
    std::vector<std::uint8_t> grown(static_cast<std::size_t>(width));
    auto piece = byFirstRun.begin();
    for (int y = 0; y < height; ++y) {
        std::fill(grown.begin(), grown.end(), std::uint8_t{0});
        for (int near = std::max(0, y - rows); near <= std::min(height - 1, y + rows); ++near) {
            const int side = sides[static_cast<std::size_t>(std::abs(y - near))];
            for (std::uint32_t i = startOf(near); i < startOf(near + 1); ++i)
                std::fill(grown.begin() + std::max(0, stretches[i].x0 - side),
                          grown.begin() + std::min(width, stretches[i].x1 + side), std::uint8_t{255});
        }
        const std::vector<RunLabels::Labelled>& runs = labels.add(grown.data(), width);
        for (; piece != byFirstRun.end() && firstRow(*piece) == y; ++piece) {
            const auto after =
                std::upper_bound(runs.begin(), runs.end(), pieces[*piece].runs.front().x0,
                                 [](int x, const RunLabels::Labelled& run) { return x < run.x0; });
            ofPieces[*piece] = (after - 1)->label;
        }
    }
    std::vector<std::size_t> firsts(labels.count(), pieces.size());
    Partition partition(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        std::size_t& first = firsts[labels.same(ofPieces[i])];
        if (first == pieces.size()) first = i;
        partition.unite(first, i);
    }
    return partition;
}

// What the pieces would be if they were joined, without their runs.
std::vector<Piece> outlines(const std::vector<Piece>& pieces, Partition& partition) {
    std::vector<Piece> result;
    std::vector<std::uint32_t> places(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Piece one;
        one.area = pieces[i].area;
        one.box = pieces[i].box;
        if (const std::size_t root = partition.find(i); root != i) {
            result[places[root]].join(std::move(one));
            continue;
        }
        places[i] = static_cast<std::uint32_t>(result.size());
        result.push_back(std::move(one));
    }
    return result;
}

// The part of the ink that lies in pieces too wide or too high to be one character.
double oversized(const std::vector<Piece>& pieces, float height) {
    double large = 0, all = 0;
    for (const Piece& piece : pieces) {
        all += piece.area;
        if (piece.box.width() > 1.2f * height || piece.box.height() > 1.6f * height) large += piece.area;
    }
    return all > 0 ? large / all : 0;
}

// Whether two pieces so close are likely to be parts of one character rather than neighbours, of which one
// may be a mark: together they are higher than either, and no larger than a character.
bool fragments(const Box& a, const Box& b, float usual) {
    Box both = a;
    both.include(b);
    if (both.height() > 1.25f * usual || both.width() > 1.1f * usual) return false;
    const float higher = std::max(a.height(), b.height());
    return both.height() > higher + 0.12f * usual || (higher < 0.45f * usual && both.width() < 0.6f * usual);
}

}  // namespace

std::vector<Piece> joinedFragments(std::vector<Piece> pieces) {
    if (pieces.size() < 2 || pieces.size() > kMostDots) return pieces;
    for (int round = 0; round < 3; ++round) {
        std::sort(pieces.begin(), pieces.end(),
                  [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
        // Where most of the print is broken, the whole is higher than the usual piece.
        const float usual = usualHeight(pieces);
        for (Piece& piece : pieces)
            std::sort(piece.runs.begin(), piece.runs.end(),
                      [](const Run& a, const Run& b) { return a.y < b.y; });
        const float reach = std::max(2.0f, 0.15f * usual);
        Partition partition(pieces.size());
        bool any = false;
        forNeighbours(pieces, reach, [&](std::size_t i, std::size_t j) {
            const Box &a = pieces[i].box, &b = pieces[j].box;
            if (std::max(a.top, b.top) - std::min(a.bottom, b.bottom) > reach || !fragments(a, b, usual))
                return;
            const bool above =
                std::min(a.right, b.right) - std::max(a.left, b.left) > 0.5f * std::min(a.width(), b.width());
            const float near = above ? reach : std::max(1.5f, 0.09f * usual);
            if (inkDistance(pieces[i], pieces[j], near) >= near) return;
            any = true;
            partition.unite(i, j);
        });
        if (!any) break;
        pieces = joined(std::move(pieces), partition);
    }
    return pieces;
}

std::vector<Piece> joinedByCloseness(std::vector<Piece> pieces, int width, int height) {
    if (pieces.size() < kFewestDots || pieces.size() > kMostDots) return pieces;
    for (int round = 0; round < 4; ++round) {
        const float usual = usualHeight(pieces);
        const double before = oversized(pieces, usual);
        bool changed = false;
        for (const float share : {0.15f, 0.09f}) {
            const float reach = std::max(2.0f, share * usual);
            Partition partition = within(pieces, reach, width, height);
            // Characters of their own stay that: dots are many to each of them.
            if (partition.parts() * 20 > pieces.size() * 13) continue;
            const std::vector<Piece> candidate = outlines(pieces, partition);
            if (oversized(candidate, usualHeight(candidate)) > before + 0.05) continue;
            pieces = joined(std::move(pieces), partition);
            changed = true;
            break;
        }
        if (!changed) break;
    }
    return pieces;
}

std::vector<Piece> joinedDots(std::vector<Piece> pieces) {
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.box.left < b.box.left; });
    const float size = dotSize(pieces);
    if (size <= 0) return pieces;

    // Steps from dot to dot along and across the line: the nearest neighbour that stands in the same row or
    // column.
    constexpr float kNone = 1e9f;
    std::vector<float> across(pieces.size(), kNone), along(pieces.size(), kNone);
    forNeighbours(pieces, 3 * size, [&](std::size_t i, std::size_t j) {
        const float dx = std::abs(pieces[j].box.middleX() - pieces[i].box.middleX());
        const float dy = std::abs(pieces[j].box.middleY() - pieces[i].box.middleY());
        if (dy < 0.4f * size && dx < 3 * size)
            for (const std::size_t k : {i, j}) along[k] = std::min(along[k], dx);
        if (dx < 0.4f * size && dy < 3 * size)
            for (const std::size_t k : {i, j}) across[k] = std::min(across[k], dy);
    });
    std::erase(along, kNone);
    std::erase(across, kNone);
    if (along.size() * 4 < pieces.size() || across.size() * 4 < pieces.size()) return pieces;
    const float stepX = quantile(along, 0.4), stepY = quantile(across, 0.4);

    Partition partition(pieces.size());
    forNeighbours(pieces, 2 * stepX, [&](std::size_t i, std::size_t j) {
        const Box &a = pieces[i].box, &b = pieces[j].box;
        const float gapX = std::max(a.left, b.left) - std::min(a.right, b.right) + size;
        const float gapY = std::max(a.top, b.top) - std::min(a.bottom, b.bottom) + size;
        if (std::hypot(std::max(0.0f, gapX) / stepX, std::max(0.0f, gapY) / stepY) <= 1.6f)
            partition.unite(i, j);
    });
    // Rows of separate marks (a dotted rule, a row of full stops) are no dotted characters.
    return partition.parts() * 5 < pieces.size() * 2 ? joined(std::move(pieces), partition) : pieces;
}

}  // namespace dravik::engine
