#include "activex/win32/CellGroup.h"

#include <cstdlib>
#include <limits>

#include "activex/win32/Gdi.h"
#include "activex/win32/Peer.h"

namespace dravik {
namespace {

constexpr int kSidewaysWeight = 3;

POINT centreOf(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

}  // namespace

void CellGroup::add(Peer& cell) {
    if (cells_.empty()) tabStop_ = &cell;
    cells_.push_back(&cell);
}

Peer* CellGroup::neighbour(const Peer& from, UINT key) const {
    if (key == VK_HOME) return cells_.front();
    if (key == VK_END) return cells_.back();
    POINT direction{};
    switch (key) {
        case VK_LEFT:
            direction = {-1, 0};
            break;
        case VK_RIGHT:
            direction = {1, 0};
            break;
        case VK_UP:
            direction = {0, -1};
            break;
        case VK_DOWN:
            direction = {0, 1};
            break;
        default:
            return nullptr;
    }
    RECT start{};
    GetWindowRect(from.window(), &start);
    const POINT middle = centreOf(start);
    Peer* best = nullptr;
    long leastCost = std::numeric_limits<long>::max();
    for (Peer* cell : cells_) {
        if (!cell->isUsable()) continue;
        RECT rect{};
        GetWindowRect(cell->window(), &rect);
        const POINT there = centreOf(rect);
        const POINT way{there.x - middle.x, there.y - middle.y};
        const long ahead = way.x * direction.x + way.y * direction.y;
        const long sideways = std::labs(way.x * direction.y + way.y * direction.x);
        // A cell of another row is no neighbour to the left or right.
        if (ahead <= 0 || (direction.y == 0 && sideways >= heightOf(start) / 2)) continue;
        const long cost = ahead + kSidewaysWeight * sideways;
        if (cost < leastCost) {
            leastCost = cost;
            best = cell;
        }
    }
    return best;
}

}  // namespace dravik
