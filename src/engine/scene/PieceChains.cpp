#include "engine/scene/PieceChains.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "engine/scene/PrintDirections.h"

namespace dravik::engine {
namespace {

float middleOf(std::vector<float> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool isLetterSized(const Box& box, float unit) {
    return box.height() >= kLeastPieceHeight * unit && box.height() <= kMostPieceHeight * unit &&
           box.width() <= 3 * box.height() && box.height() <= 12 * box.width();
}

// Chains of pieces that follow each other to the right. The pieces are measured in a frame in which `unit` is
// a working pixel.
std::vector<Chain> chains(std::span<const Piece> pieces, float unit) {
    std::vector<std::size_t> order(pieces.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::erase_if(order, [&](std::size_t i) { return !isLetterSized(pieces[i].box, unit); });
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return pieces[a].box.left < pieces[b].box.left; });
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::vector<std::size_t> next(pieces.size(), kNone), before(pieces.size(), kNone);
    std::vector<std::pair<float, std::pair<std::size_t, std::size_t>>> links;
    for (std::size_t a = 0; a < order.size(); ++a) {
        const Box& box = pieces[order[a]].box;
        const float reach = box.right + 2.6f * box.height();
        for (std::size_t b = a + 1; b < order.size() && pieces[order[b]].box.left < reach; ++b) {
            const Box& other = pieces[order[b]].box;
            const float least = std::min(box.height(), other.height()),
                        most = std::max(box.height(), other.height());
            if (most > 1.75f * least || other.middleX() <= box.middleX()) continue;
            const float shared = std::min(box.bottom, other.bottom) - std::max(box.top, other.top);
            const float gap = std::max(0.0f, other.left - box.right);
            if (shared < 0.6f * least || gap > 2 * most) continue;
            const float uneven = std::min(std::abs(box.bottom - other.bottom), std::abs(box.top - other.top));
            if (uneven > 0.25f * most) continue;
            links.push_back({gap + 2 * uneven + 0.5f * (most - least), {order[a], order[b]}});
        }
    }
    std::sort(links.begin(), links.end());
    Partition rows(pieces.size());
    for (const auto& [cost, link] : links) {
        const auto [a, b] = link;
        if (next[a] != kNone || before[b] != kNone || rows.find(a) == rows.find(b)) continue;
        next[a] = b;
        before[b] = a;
        rows.unite(a, b);
    }
    std::vector<Chain> result;
    for (const std::size_t first : order) {
        if (before[first] != kNone) continue;
        Chain& chain = result.emplace_back();
        for (std::size_t i = first; i != kNone; i = next[i]) chain.members.push_back(i);
    }
    std::erase_if(result, [](const Chain& chain) { return chain.members.size() < 2; });
    return result;
}

void measure(Chain& chain, std::span<const Piece> pieces) {
    std::vector<float> tops, bottoms;
    for (const std::size_t i : chain.members) {
        tops.push_back(pieces[i].box.top);
        bottoms.push_back(pieces[i].box.bottom);
    }
    chain.bottom = middleOf(std::move(bottoms));
    // Of capitals and figures, where there are any.
    std::sort(tops.begin(), tops.end());
    chain.top = tops[tops.size() / 4];
}

// Share of its box, which is turned with the frame, that a piece fills.
float solidity(const Piece& piece, float unit) {
    return static_cast<float>(piece.area) * unit * unit /
           std::max(1.0f, piece.box.width() * piece.box.height());
}

// The median of the slopes between members that are some way apart: the chain's own, in the pieces' frame.
float slopeOf(const Chain& chain, std::span<const Piece> pieces) {
    std::vector<float> slopes;
    const std::size_t count = chain.members.size(), step = std::max<std::size_t>(1, count / 2);
    for (std::size_t i = 0; i + step < count; ++i) {
        const Box& a = pieces[chain.members[i]].box;
        const Box& b = pieces[chain.members[i + step]].box;
        const float reach = std::max(1.0f, b.middleX() - a.middleX());
        slopes.push_back((b.bottom - a.bottom) / reach);
        slopes.push_back((b.top - a.top) / reach);
    }
    return slopes.empty() ? 0 : middleOf(std::move(slopes));
}

}  // namespace

std::vector<Chain> chainsAlong(std::vector<Piece>& pieces, float& angle) {
    std::vector<Chain> rows;
    for (int round = 0; round < 3; ++round) {
        const Frame frame{.slope = std::tan(angle)};
        for (Piece& piece : pieces) piece.measure(frame);
        rows = chains(pieces, 1 / std::cos(angle));
        float sum = 0, weight = 0;
        for (Chain& row : rows) {
            measure(row, pieces);
            if (row.members.size() < kFewestInChain) continue;
            const float count = static_cast<float>(row.members.size());
            sum += count * count * slopeOf(row, pieces);
            weight += count * count;
        }
        if (weight == 0 || round == 2) break;
        // A slope in the frame is one of the image as far as the frame is turned, not sheared.
        const float more = std::atan(sum / weight);
        angle = std::clamp(angle + more, -kSteepestPrint, kSteepestPrint);
        if (std::abs(more) < 0.002f) break;
    }
    return rows;
}

bool isBarcode(const Chain& chain, std::span<const Piece> pieces, float unit) {
    float bars = 0, gaps = 0, solid = 0;
    const Box* last = nullptr;
    for (const std::size_t i : chain.members) {
        const Box& box = pieces[i].box;
        // Bars that run together are as solid; of low print little more than the box is left, too.
        const bool tall = box.height() > 1.3f * box.width() || box.height() > 11 * unit;
        const bool filled = solidity(pieces[i], unit) > 0.72f;
        solid += filled && box.height() > 9 * unit;
        bars += filled && tall;
        if (last) gaps += std::max(0.0f, box.left - last->right) / chain.height();
        last = &box;
    }
    const float count = static_cast<float>(chain.members.size());
    return (count >= 4 && bars >= 0.7f * count && gaps / (count - 1) < 0.28f) ||
           (count >= 6 && solid >= 0.8f * count);
}

bool isAmongMany(const Chain& chain, std::span<const Piece> pieces) {
    const float height = chain.height(), left = pieces[chain.members.front()].box.left,
                right = pieces[chain.members.back()].box.right;
    float above = 0, below = 0;
    for (const Piece& piece : pieces) {
        const Box& box = piece.box;
        if (box.middleX() < left || box.middleX() > right || box.height() > 1.5f * height ||
            box.height() < 0.25f * height)
            continue;
        const float up = chain.top - box.middleY(), down = box.middleY() - chain.bottom;
        above += up > -0.05f * height && up < 0.62f * height;
        below += down > -0.05f * height && down < 0.62f * height;
    }
    const float count = static_cast<float>(chain.members.size());
    return std::min(above, below) > 0.3f * count || above + below > 0.9f * count;
}

void joinAcrossBlanks(std::vector<Chain>& rows, std::span<const Piece> pieces, float unit) {
    std::sort(rows.begin(), rows.end(), [&](const Chain& a, const Chain& b) {
        return pieces[a.members.front()].box.left < pieces[b.members.front()].box.left;
    });
    for (std::size_t a = 0; a < rows.size(); ++a)
        for (std::size_t b = a + 1; b < rows.size();) {
            const float height = std::max(rows[a].height(), rows[b].height());
            const float least = std::min(rows[a].height(), rows[b].height());
            const float gap =
                pieces[rows[b].members.front()].box.left - pieces[rows[a].members.back()].box.right;
            const bool loose =
                std::any_of(rows[b].members.begin(), rows[b].members.end(),
                            [&](std::size_t i) { return solidity(pieces[i], unit) < 0.72f; }) &&
                std::any_of(rows[a].members.begin(), rows[a].members.end(),
                            [&](std::size_t i) { return solidity(pieces[i], unit) < 0.72f; });
            if (loose && gap > -0.5f * height && gap < 3.5f * height && height < 1.6f * least &&
                std::abs(rows[a].bottom - rows[b].bottom) < 0.25f * height) {
                rows[a].members.insert(rows[a].members.end(), rows[b].members.begin(), rows[b].members.end());
                measure(rows[a], pieces);
                rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(b));
                b = a + 1;
            } else {
                ++b;
            }
        }
}

void trimEnds(Chain& chain, std::span<const Piece> pieces, float unit) {
    const float height = chain.height();
    const auto isForeign = [&](std::size_t i) {
        const Box& box = pieces[i].box;
        const bool even = std::abs(box.bottom - chain.bottom) < 0.14f * height &&
                          (std::abs(box.top - chain.top) < 0.14f * height ||
                           std::abs(box.top - chain.bottom + 0.72f * height) < 0.14f * height);
        return !even || box.height() > 2.5f * box.width() || solidity(pieces[i], unit) > 0.72f;
    };
    for (const bool atFront : {true, false}) {
        std::vector<std::size_t>& members = chain.members;
        if (atFront) std::reverse(members.begin(), members.end());
        for (std::size_t tail = 1; tail <= 2 && members.size() > tail + 2; ++tail) {
            const Box& end = pieces[members[members.size() - tail]].box;
            const Box& beside = pieces[members[members.size() - tail - 1]].box;
            const float gap = std::max(end.left, beside.left) - std::min(end.right, beside.right);
            const auto last = members.end() - static_cast<std::ptrdiff_t>(tail);
            const bool foreign = gap > 1.1f * height ? std::any_of(last, members.end(), isForeign)
                                                     : std::all_of(last, members.end(), isForeign);
            if (gap < 0.75f * height || !foreign) continue;
            members.resize(members.size() - tail);
            tail = 0;
        }
        if (atFront) std::reverse(members.begin(), members.end());
    }
}

float scoreOf(const Chain& chain, std::span<const Piece> pieces) {
    const float height = chain.height();
    float score = 0;
    for (const std::size_t i : chain.members) {
        const Box& box = pieces[i].box;
        const bool stands = std::abs(box.bottom - chain.bottom) < 0.14f * height;
        const bool hangs = std::abs(box.top - chain.top) < 0.14f * height ||
                           std::abs(box.top - chain.bottom + 0.72f * height) < 0.12f * height;
        if (stands && hangs)
            score += 1;
        else if (stands || hangs)
            score += 0.7f;
    }
    const float count = static_cast<float>(chain.members.size());
    return score * score / count;
}

void reachOut(const Chain& row, std::span<const Piece> pieces, float& left, float& right) {
    const float height = row.height();
    for (bool grown = true; grown;) {
        grown = false;
        for (const Piece& piece : pieces) {
            const Box& box = piece.box;
            const bool mark = box.height() <= 0.62f * height && box.width() <= 1.2f * height;
            const bool inRow = std::abs(box.bottom - row.bottom) < 0.25f * height ||
                               std::abs(box.top - row.top) < 0.25f * height;
            const bool letter = inRow && box.height() <= 1.4f * height && box.width() <= 1.5f * height;
            if ((!mark && !letter) || box.top < row.top - 0.25f * height ||
                box.bottom > row.bottom + 0.35f * height)
                continue;
            const float reach = 0.6f * height;
            if (box.right > right && box.left < right + reach && box.left > left) {
                right = box.right;
                grown = true;
            }
            if (box.left < left && box.right > left - reach && box.right < right) {
                left = box.left;
                grown = true;
            }
        }
    }
}

}  // namespace dravik::engine
