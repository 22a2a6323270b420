#include "engine/image/Components.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <numeric>
#include <utility>

#include "engine/image/RunLabels.h"

namespace dravik::engine {

void Box::include(const Box& other) noexcept {
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

void Piece::measure(const Frame& frame) {
    constexpr float kFar = std::numeric_limits<float>::max();
    box = {kFar, kFar, -kFar, -kFar};
    for (const Run& run : runs) {
        const float y = static_cast<float>(run.y) + 0.5f;
        const float first = static_cast<float>(run.x0), last = static_cast<float>(run.x1);
        const float across0 = frame.across(first, y), across1 = frame.across(last, y);
        box.include({frame.along(first, y), std::min(across0, across1) - 0.5f, frame.along(last, y),
                     std::max(across0, across1) + 0.5f});
    }
}

void Piece::join(Piece&& other) {
    runs.insert(runs.end(), other.runs.begin(), other.runs.end());
    area += other.area;
    box.include(other.box);
    other = {};
}

Partition::Partition(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), 0u);
}

std::size_t Partition::find(std::size_t element) {
    while (parents_[element] != element) {
        parents_[element] = parents_[parents_[element]];
        element = parents_[element];
    }
    return element;
}

void Partition::unite(std::size_t a, std::size_t b) {
    a = find(a);
    b = find(b);
    if (a != b) parents_[std::max(a, b)] = static_cast<std::uint32_t>(std::min(a, b));
}

std::vector<Piece> components(const InkImage& image, int leastArea, std::size_t mostPieces) {
    const auto row = [&image](int y) {
        return &image.ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width)];
    };
    RunLabels labels;
    std::deque<std::uint32_t> labelsOfRuns;  // in steps, since nobody knows how many there will be
    for (int y = 0; y < image.height; ++y)
        for (const RunLabels::Labelled& run : labels.add(row(y), image.width))
            labelsOfRuns.push_back(run.label);
    struct Extent {
        int area = 0;
        std::uint32_t runs = 0;  // how many; the component's place once there is room for them
    };
    std::vector<Extent> extents(labels.count());  // by label
    const auto forRuns = [&](const auto& visit) {
        auto label = labelsOfRuns.begin();
        for (int y = 0; y < image.height; ++y)
            forInkRuns(row(y), image.width, [&](int x0, int x1) {
                visit(extents[labels.same(*label++)], Run{x0, x1, y});
            });
    };
    forRuns([](Extent& one, const Run& run) {
        one.area += run.x1 - run.x0;
        ++one.runs;
    });
    const auto isLarge = [leastArea](const Extent& one) { return one.runs > 0 && one.area >= leastArea; };
    const std::ptrdiff_t found = std::count_if(extents.begin(), extents.end(), isLarge);
    if (static_cast<std::size_t>(found) > mostPieces) return {};

    std::vector<Piece> pieces;
    pieces.reserve(static_cast<std::size_t>(found));
    for (Extent& one : extents)
        if (isLarge(one)) {
            Piece& piece = pieces.emplace_back();
            piece.area = one.area;
            piece.runs.reserve(one.runs);
            one.runs = static_cast<std::uint32_t>(pieces.size() - 1);
        }
    forRuns([&](const Extent& one, const Run& run) {
        if (one.area >= leastArea) pieces[one.runs].runs.push_back(run);
    });
    for (Piece& piece : pieces) piece.measure({});
    return pieces;
}

std::size_t Partition::parts() {
    std::size_t count = 0;
    for (std::size_t element = 0; element < parents_.size(); ++element) count += find(element) == element;
    return count;
}

std::vector<Piece> joined(std::vector<Piece> pieces, Partition& partition) {
    std::vector<std::uint32_t> places(pieces.size()), runs(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        runs[partition.find(i)] += static_cast<std::uint32_t>(pieces[i].runs.size());
    // In place: a piece's representative stands before it, and moves no farther back than it stood.
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::size_t root = partition.find(i);
        if (root != i) {
            pieces[places[root]].join(std::move(pieces[i]));
            continue;
        }
        pieces[i].runs.reserve(runs[i]);
        if (count != i) pieces[count] = std::move(pieces[i]);
        places[i] = count++;
    }
    pieces.resize(count);
    pieces.shrink_to_fit();
    return pieces;
}

float inkDistance(const Piece& a, const Piece& b, float reach) {
    // Columns that the ink covers.
    const auto columns = [](const Piece& piece) {
        int left = std::numeric_limits<int>::max(), right = std::numeric_limits<int>::min();
        for (const Run& run : piece.runs) {
            left = std::min<int>(left, run.x0);
            right = std::max<int>(right, run.x1);
        }
        return std::pair(left, right);
    };
    const auto [leftA, rightA] = columns(a);
    const auto [leftB, rightB] = columns(b);
    float least = reach;
    if (a.runs.empty() || b.runs.empty() ||
        static_cast<float>(std::max(leftB - rightA, leftA - rightB)) >= reach)
        return least;
    // Rows so far apart at most may still be nearer than what was found.
    int rows = static_cast<int>(reach);
    std::size_t first = 0;
    for (const Run& run : a.runs) {
        while (first < b.runs.size() && b.runs[first].y < run.y - rows) ++first;
        for (std::size_t k = first; k < b.runs.size() && b.runs[k].y <= run.y + rows; ++k) {
            const Run& other = b.runs[k];
            const float dx = static_cast<float>(std::max({0, other.x0 - run.x1, run.x0 - other.x1}));
            const float dy = static_cast<float>(std::max(0, std::abs(run.y - other.y) - 1));
            if (dx >= least || dy >= least) continue;
            least = std::min(least, std::hypot(dx, dy));
            if (least <= 0) return 0;
            rows = std::min(rows, static_cast<int>(least) + 1);
        }
    }
    return least;
}

namespace {

void add(Piece& part, const Run& run) {
    part.runs.push_back(run);
    part.area += run.x1 - run.x0;
}

}  // namespace

std::pair<Piece, Piece> cut(const Piece& piece, const Frame& frame, float along) {
    std::pair<Piece, Piece> parts;
    for (const Run& run : piece.runs) {
        const float x = along - (frame.slope + frame.slant) * (static_cast<float>(run.y) + 0.5f);
        const int border = static_cast<int>(std::lround(x));
        if (border <= run.x0) {
            add(parts.second, run);
        } else if (border >= run.x1) {
            add(parts.first, run);
        } else {
            add(parts.first, {run.x0, border, run.y});
            add(parts.second, {border, run.x1, run.y});
        }
    }
    parts.first.measure(frame);
    parts.second.measure(frame);
    return parts;
}

std::pair<Piece, Piece> cutAcross(const Piece& piece, const Frame& frame, float across) {
    std::pair<Piece, Piece> parts;
    for (const Run& run : piece.runs) {
        const float middle = 0.5f * static_cast<float>(run.x0 + run.x1);
        add(frame.across(middle, static_cast<float>(run.y) + 0.5f) < across ? parts.first : parts.second,
            run);
    }
    parts.first.measure(frame);
    parts.second.measure(frame);
    return parts;
}

}  // namespace dravik::engine
