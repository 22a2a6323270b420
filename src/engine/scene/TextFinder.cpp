#include "engine/scene/TextFinder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

#include "engine/image/Binarization.h"
#include "engine/image/Components.h"

namespace dravik::engine {
namespace {

// Most pixels of the largest picture that is searched.
constexpr std::int64_t kMostSearched = 700'000;
// Reductions of that picture that are searched too, so that print of every size is once as high as suits.
constexpr std::array<int, 5> kReductions = {1, 2, 3, 4, 6};
// Wider than strokes, about three quarters of the height that suits, in working pixels.
constexpr int kSide = 14;
constexpr float kLeastHeight = 7, kMostHeight = 34;
// Print of dots runs together when it is blurred so much, in working pixels.
constexpr float kDotBlur = 1.4f;
constexpr std::size_t kMostPieces = 6'000;
constexpr float kSteepest = 0.82f;  // radians, a little beyond 45 degrees
constexpr std::size_t kFewestInLine = 3;
constexpr float kRadian = 57.29578f;

// A picture with so many edges of ink is noise or texture.
constexpr std::int64_t kFewestPixelsToEdge = 14;

struct View {
    int scale = 1;
    bool dark = true;
    float blur = 0;
};

float middleOf(std::vector<float> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

float extent(const Piece& piece) {
    return std::max(piece.box.width(), piece.box.height());
}

// Pieces that may be characters, in a picture that is not turned yet.
std::vector<Piece> candidates(const InkImage& ink) {
    std::vector<Piece> pieces = components(ink, 6, kMostPieces);
    std::erase_if(pieces, [&](const Piece& piece) {
        const float size = extent(piece);
        return size < 0.5f * kLeastHeight || size > 2.2f * kMostHeight || piece.box.left < 1 ||
               piece.box.top < 1 || piece.box.right > static_cast<float>(ink.width) - 1 ||
               piece.box.bottom > static_cast<float>(ink.height) - 1;
    });
    return pieces;
}

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

// Directions in which pieces have neighbours of like size, the most frequent first: at most three.
std::vector<float> directions(std::span<const Piece> pieces, int width, int height) {
    constexpr int kMost = 48, kBins = 2 * kMost + 1;  // degrees
    constexpr std::size_t kNearest = 3;
    std::array<float, kBins> votes{};
    const Neighbourhood neighbours(pieces, width, height);
    std::vector<std::pair<float, std::size_t>> near;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Box& box = pieces[i].box;
        const float size = extent(pieces[i]);
        if (size < kLeastHeight) continue;
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
                if (std::abs(angle) > kSteepest) continue;
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

struct Chain {
    std::vector<std::size_t> members;  // from left to right
    float top = 0, bottom = 0;         // middle of the members'
    float slope = 0;                   // of the bottoms, beyond the frame's
    float score = 0;
    float height() const { return bottom - top; }
};

bool isLetterSized(const Box& box, float unit) {
    return box.height() >= kLeastHeight * unit && box.height() <= kMostHeight * unit &&
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

// Bars side by side, at distances much smaller than their height.
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

// Squares in rows closer than lines of text are: there are as many pieces right above and right below the
// chain.
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

// How many of the members stand on the line or hang from its top, those that look like characters alone.
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

// One or two pieces at an end, far from the others, that are no characters: the rim of a hole, squares of a
// code.
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

// One line of print where what is between two chains is no more than a wide blank.
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

// Lines along one direction, refined by what they themselves say of it.
std::vector<Chain> rowsAlong(std::vector<Piece>& pieces, float& angle) {
    std::vector<Chain> rows;
    for (int round = 0; round < 3; ++round) {
        const Frame frame{.slope = std::tan(angle)};
        for (Piece& piece : pieces) piece.measure(frame);
        rows = chains(pieces, 1 / std::cos(angle));
        float sum = 0, weight = 0;
        for (Chain& row : rows) {
            measure(row, pieces);
            if (row.members.size() < kFewestInLine) continue;
            const float count = static_cast<float>(row.members.size());
            sum += count * count * slopeOf(row, pieces);
            weight += count * count;
        }
        if (weight == 0 || round == 2) break;
        // A slope in the frame is one of the image as far as the frame is turned, not sheared.
        const float more = std::atan(sum / weight);
        angle = std::clamp(angle + more, -kSteepest, kSteepest);
        if (std::abs(more) < 0.002f) break;
    }
    return rows;
}

// What stands in the line beside the chain belongs to it too: marks, and characters that were not like their
// neighbours.
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

struct Seen {
    TextLine line;
    int scale = 1;  // of the view
};

// What a search has found: lines, and places that are full of bars or squares instead.
struct Findings {
    std::vector<Seen> lines, codes;
};

void searchView(const Binarizer& binarizer, const View& view, Findings& found) {
    const InkImage ink = binarizer.separate(view.dark, kSide, view.blur);
    if (ink.empty() || ink.edges() > static_cast<std::int64_t>(ink.ink.size()) / kFewestPixelsToEdge) return;
    std::vector<Piece> pieces = candidates(ink);
    if (pieces.size() < kFewestInLine) return;
    for (const float direction : directions(pieces, ink.width, ink.height)) {
        float angle = direction;
        std::vector<Chain> rows = rowsAlong(pieces, angle);
        // What is measured in the frame is longer by this than in the picture.
        const float unit = 1 / std::cos(angle), shrink = ink.scale / unit;
        const auto lineOf = [&](const Chain& row, float left, float right) {
            return TextLine{angle,     left * shrink, right * shrink, row.top * shrink, row.bottom * shrink,
                            view.dark, row.score};
        };
        const auto isCode = [&](Chain& row) {
            if (!isBarcode(row, pieces, unit) && !isAmongMany(row, pieces)) return false;
            row.score = static_cast<float>(row.members.size());
            if (view.blur == 0)
                found.codes.push_back(
                    {lineOf(row, pieces[row.members.front()].box.left, pieces[row.members.back()].box.right),
                     view.scale});
            return true;
        };
        std::erase_if(rows, isCode);
        joinAcrossBlanks(rows, pieces, unit);
        for (Chain& row : rows) {
            trimEnds(row, pieces, unit);
            row.score = scoreOf(row, pieces);
            if (row.members.size() < kFewestInLine || row.score < 2) continue;
            float left = pieces[row.members.front()].box.left, right = left;
            for (const std::size_t i : row.members) right = std::max(right, pieces[i].box.right);
            reachOut(row, pieces, left, right);
            found.lines.push_back({lineOf(row, left, right), view.scale});
        }
        for (Piece& piece : pieces) piece.measure({});
    }
}

struct Point {
    float x, y;
};

Point placeOf(const TextLine& line, float along, float across) {
    const float c = std::cos(line.angle), s = std::sin(line.angle);
    return {along * c - across * s, along * s + across * c};
}

// Share of the smaller line's box that the other covers, sampled along its middle.
bool isSamePlace(const TextLine& a, const TextLine& b) {
    const TextLine& small = a.right - a.left < b.right - b.left ? a : b;
    const TextLine& large = &small == &a ? b : a;
    const float c = std::cos(large.angle), s = std::sin(large.angle);
    int inside = 0;
    constexpr int kSamples = 9;
    for (int i = 0; i < kSamples; ++i) {
        const float part = (static_cast<float>(i) + 0.5f) / kSamples;
        const Point place =
            placeOf(small, small.left + part * (small.right - small.left), 0.5f * (small.top + small.bottom));
        const float along = place.x * c + place.y * s, across = place.y * c - place.x * s;
        const float room = 0.3f * large.height();
        inside += along > large.left - room && along < large.right + room && across > large.top - room &&
                  across < large.bottom + room;
    }
    return inside > kSamples / 3;
}

float areaOf(const TextLine& line) {
    return line.height() * (line.right - line.left);
}

float clearness(const TextLine& line) {
    return line.score * areaOf(line) * areaOf(line);
}

// Of the lines at one place the one that scores best. The spaces between and inside characters look like
// print of the other polarity, but are less high and less long than what is around them.
std::vector<TextLine> best(std::vector<Seen> found, std::span<const Seen> codes) {
    // What finer views show as a code is none of the lines that coarser ones make of it.
    std::erase_if(found, [&](const Seen& seen) {
        return std::any_of(codes.begin(), codes.end(), [&](const Seen& code) {
            return seen.line.dark == code.line.dark && code.scale <= seen.scale &&
                   isSamePlace(seen.line, code.line) && code.line.score > 0.7f * seen.line.score &&
                   areaOf(code.line) > 0.3f * areaOf(seen.line);
        });
    });
    std::stable_sort(found.begin(), found.end(),
                     [](const Seen& a, const Seen& b) { return a.line.score > b.line.score; });
    std::vector<TextLine> lines;
    for (const Seen& seen : found)
        if (std::none_of(lines.begin(), lines.end(), [&](const TextLine& one) {
                return one.dark == seen.line.dark && isSamePlace(seen.line, one);
            }))
            lines.push_back(seen.line);
    std::vector<TextLine> result;
    for (const TextLine& line : lines)
        if (std::none_of(lines.begin(), lines.end(), [&](const TextLine& other) {
                return other.dark != line.dark && isSamePlace(line, other) &&
                       clearness(other) > clearness(line);
            }))
            result.push_back(line);
    return result;
}

// The best correlation of two rows, one of which may be shifted by up to so many places.
float correlation(std::span<const float> a, std::span<const float> b, int reach) {
    float best = -1;
    const int length = static_cast<int>(a.size()) - reach;
    for (int shift = -reach; length > reach && shift <= reach; ++shift) {
        double sumA = 0, sumB = 0, squareA = 0, squareB = 0, product = 0;
        for (int i = reach; i < length; ++i) {
            const double x = static_cast<double>(a[static_cast<std::size_t>(i)]),
                         y = static_cast<double>(b[static_cast<std::size_t>(i + shift)]);
            sumA += x;
            sumB += y;
            squareA += x * x;
            squareB += y * y;
            product += x * y;
        }
        const double count = length - reach;
        const double spread = std::sqrt((squareA - sumA * sumA / count) * (squareB - sumB * sumB / count));
        if (spread > 0) best = std::max(best, static_cast<float>((product - sumA * sumB / count) / spread));
    }
    return best;
}

// Whether the picture looks the same all the way down the line, as bars do. A text of I, l and 1 does so too,
// but its strokes are of one width and not so close.
bool isBarred(const GreyImage& image, const TextLine& line) {
    constexpr int kRows = 3;
    const float c = std::cos(line.angle), s = std::sin(line.angle), height = line.height();
    const int width = static_cast<int>(line.right - line.left);
    std::array<std::vector<float>, 3> means;
    for (std::size_t k = 0; k < means.size(); ++k) {
        means[k].assign(static_cast<std::size_t>(width), 0);
        for (int r = 0; r < kRows; ++r) {
            const float across =
                line.top + (0.2f + 0.25f * static_cast<float>(k) + 0.05f * static_cast<float>(r)) * height;
            for (int x = 0; x < width; ++x) {
                const float along = line.left + static_cast<float>(x);
                means[k][static_cast<std::size_t>(x)] +=
                    image.levelAt(along * c - across * s, along * s + across * c);
            }
        }
    }
    // The line's direction is known to a degree or so.
    const int reach = 1 + static_cast<int>(0.04f * height);
    const float alike =
        std::min({correlation(means[0], means[1], reach), correlation(means[1], means[2], reach),
                  correlation(means[0], means[2], reach)});
    if (alike < 0.9f) return false;
    const auto [low, high] = std::minmax_element(means[1].begin(), means[1].end());
    const float middle = 0.5f * (*low + *high);
    std::vector<float> bars;
    float inBar = 0;
    for (const float level : means[1]) {
        if ((level < middle) == line.dark)
            ++inBar;
        else if (inBar > 0)
            bars.push_back(std::exchange(inBar, 0.0f));
    }
    if (bars.size() < 3) return false;
    float sum = 0, squares = 0;
    for (const float bar : bars) {
        sum += bar;
        squares += bar * bar;
    }
    const float count = static_cast<float>(bars.size()), mean = sum / count;
    const float spread = std::sqrt(std::max(0.0f, squares / count - mean * mean));
    return spread > 0.3f * mean || static_cast<float>(width) < 0.25f * count * line.height();
}

bool areAkin(const TextLine& a, const TextLine& b) {
    return std::abs(a.angle - b.angle) < 0.06f && a.dark == b.dark && a.height() < 2.2f * b.height() &&
           b.height() < 2.2f * a.height();
}

// The print of a part is of one direction, polarity and size, more or less: the lines most of which are akin
// stay, and what is as clear as they are.
void keepPrint(std::vector<TextLine>& lines) {
    const TextLine* print = nullptr;
    float most = 0;
    for (const TextLine& one : lines) {
        float weight = 0;
        for (const TextLine& other : lines)
            if (areAkin(one, other)) weight += other.score * std::sqrt(other.height());
        if (weight > most) {
            most = weight;
            print = &one;
        }
    }
    if (!print) return;
    const TextLine chosen = *print;
    std::erase_if(lines, [&](const TextLine& one) {
        return !areAkin(one, chosen) && one.score < std::max(6.0f, 0.8f * chosen.score);
    });
}

}  // namespace

std::vector<TextLine> findTextLines(const GreyImage& image, const std::stop_token& stop) {
    int least = 1;
    while (static_cast<std::int64_t>(image.width() / least) * (image.height() / least) > kMostSearched ||
           std::max(image.width(), image.height()) / least > kMostInkSide)
        ++least;
    Findings found;
    const Region whole{0, 0, image.width(), image.height()};
    for (const int reduction : kReductions) {
        if (stop.stop_requested()) return {};
        const int scale = least * reduction;
        const Binarizer binarizer(image, whole, static_cast<float>(scale));
        if (binarizer.empty() || std::min(binarizer.width(), binarizer.height()) < 2 * kSide) break;
        for (const bool dark : {true, false})
            for (const float blur : {0.0f, kDotBlur}) searchView(binarizer, {scale, dark, blur}, found);
    }
    std::vector<TextLine> lines = best(std::move(found.lines), found.codes);
    std::erase_if(lines, [&](const TextLine& line) { return isBarred(image, line); });
    keepPrint(lines);
    std::sort(lines.begin(), lines.end(), [](const TextLine& a, const TextLine& b) {
        const float middle = 0.5f * (a.top + a.bottom), other = 0.5f * (b.top + b.bottom);
        return std::abs(middle - other) < 0.4f * std::min(a.height(), b.height()) ? a.left < b.left
                                                                                  : middle < other;
    });
    return lines;
}

}  // namespace dravik::engine
