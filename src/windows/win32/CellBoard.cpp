#include "windows/win32/CellBoard.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "windows/win32/CellPeer.h"
#include "windows/win32/DrawnAnswer.h"
#include "windows/win32/Module.h"
#include "windows/win32/Page.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kSidewaysWeight = 3;

POINT centreOf(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

bool canFocus(const CellPeer& cell) {
    return cell.takesFocus() && cell.isUsable();
}

}  // namespace

void CellBoard::add(CellPeer& cell) {
    cells_.push_back(&cell);
    if (!current_ || (!current_->takesFocus() && cell.takesFocus())) makeCurrent(cell);
}

HWND CellBoard::open(HWND parent) {
    if (window()) return window();
    const HWND made = CreateWindowExW(0, drawnClass(L"DravikCells"), L"",
                                      WS_CHILD | WS_CLIPSIBLINGS | (current_->takesFocus() ? WS_TABSTOP : 0u),
                                      0, 0, 0, 0, parent, nullptr, moduleInstance(), nullptr);
    if (!made) return nullptr;
    takeOver(made);
    makeCurrent(*current_);
    return made;
}

int CellBoard::numberOf(const CellPeer& cell) const {
    return static_cast<int>(std::find(cells_.begin(), cells_.end(), &cell) - cells_.begin()) + 1;
}

void CellBoard::makeCurrent(CellPeer& cell) {
    current_ = &cell;
    if (window()) page_.addWindow(window(), cell);
}

void CellBoard::put(CellPeer& cell, const RECT& place) {
    if (cell.setPlace(place) && window() && IsWindowVisible(window()))
        InvalidateRect(window(), nullptr, FALSE);
}

RECT CellBoard::settle() {
    RECT around{};
    for (const CellPeer* cell : cells_)
        if (cell->isSeen()) UnionRect(&around, &around, &cell->place());
    return bounds_ = around;
}

const CellPeer* CellBoard::tabStop() const {
    if (canFocus(*current_)) return current_;
    const auto first =
        std::find_if(cells_.begin(), cells_.end(), [](const CellPeer* cell) { return canFocus(*cell); });
    return first == cells_.end() ? nullptr : *first;
}

void CellBoard::prefer(CellPeer& cell) {
    if (GetFocus() != window()) makeCurrent(cell);
}

void CellBoard::focus(CellPeer& cell) {
    if (GetFocus() != window()) {
        makeCurrent(cell);
        SetFocus(window());
        return;
    }
    if (&cell == current_) return;
    const auto from = current_->shared_from_this();
    const auto to = cell.shared_from_this();
    CellPeer& before = *current_;
    makeCurrent(cell);
    before.leave();
    if (window() && current_ == &cell) cell.arrive();
}

Peer* CellBoard::neighbour(const CellPeer& from, UINT key) const {
    if (key == VK_HOME || key == VK_END) {
        CellPeer* end = nullptr;
        for (CellPeer* cell : cells_)
            if (canFocus(*cell) && (!end || key == VK_END)) end = cell;
        return end;
    }
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
    const POINT middle = centreOf(from.place());
    Peer* best = nullptr;
    long leastCost = std::numeric_limits<long>::max();
    for (CellPeer* cell : cells_) {
        if (!canFocus(*cell)) continue;
        const POINT there = centreOf(cell->place());
        const POINT way{there.x - middle.x, there.y - middle.y};
        const long ahead = way.x * direction.x + way.y * direction.y;
        const long sideways = std::labs(way.x * direction.y + way.y * direction.x);
        // A cell of another row is no neighbour to the left or right.
        if (ahead <= 0 || (direction.y == 0 && sideways >= heightOf(from.place()) / 2)) continue;
        const long cost = ahead + kSidewaysWeight * sideways;
        if (cost < leastCost) {
            leastCost = cost;
            best = cell;
        }
    }
    return best;
}

// A board that is to be seen is shown when it is placed.
void CellBoard::showVisible() {
    const bool seen =
        std::any_of(cells_.begin(), cells_.end(), [](const auto* cell) { return cell->isSeen(); });
    if (!seen && (GetWindowLongPtrW(window(), GWL_STYLE) & WS_VISIBLE)) ShowWindow(window(), SW_HIDE);
}

void CellBoard::showEnabled() {
    const bool enabled = std::any_of(cells_.begin(), cells_.end(), [](const CellPeer* cell) {
        if (!cell->attached() || !cell->model().enabled()) return false;
        return !cell->container() || cell->container()->isUsable();
    });
    if ((IsWindowEnabled(window()) != FALSE) != enabled) EnableWindow(window(), enabled);
}

CellPeer* CellBoard::at(POINT place) const {
    for (CellPeer* cell : cells_) {
        const RECT own = cell->shownPlace();
        if (cell->isUsable() && PtInRect(&own, place)) return cell;
    }
    return nullptr;
}

void CellBoard::paint(HDC dc, const RECT& client, const RECT& dirty) {
    fill(dc, client, page_.look().background());
    for (CellPeer* cell : cells_) {
        const RECT own = cell->shownPlace();
        RECT common{};
        if (cell->isSeen() && IntersectRect(&common, &own, &dirty)) cell->paintAt(dc, own);
    }
}

void CellBoard::windowGoes() {
    page_.removeWindow(window());
    page_.toolTips().remove(window());
    for (CellPeer* cell : cells_) cell->lose();
}

LRESULT CellBoard::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == partMessage()) return partNamed(static_cast<ATOM>(wParam));
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT)
        return accessibleAnswer(window(), *this, weak_from_this(), wParam);
    if (message != WM_SETFOCUS && message != WM_KILLFOCUS)
        if (const auto result = drawnAnswer(
                window(), message, wParam,
                [this](HDC dc, const RECT& client, const RECT& dirty) { paint(dc, client, dirty); }))
            return *result;
    CellPeer* cell = current_;
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST && message != WM_MOUSEWHEEL) {
        cell = at({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        if (!cell) page_.toolTips().relay(window(), message, wParam, lParam);
    }
    if (!cell) return defaultAnswer(message, wParam, lParam);
    const auto kept = cell->shared_from_this();
    return cell->answer(message, wParam, lParam);
}

int CellBoard::partNamed(ATOM name) const {
    wchar_t wanted[256] = {};
    if (GlobalGetAtomNameW(name, wanted, static_cast<int>(std::size(wanted))) == 0) return 0;
    for (const CellPeer* cell : cells_)
        if (cell->attached() && nameMark(cell->model().name()) == wanted) return numberOf(*cell);
    return 0;
}

LONG CellBoard::role() const {
    return ROLE_SYSTEM_TABLE;
}

// That of the group that it stands in.
std::wstring CellBoard::name() const {
    return windowText(GetParent(window()));
}

LONG CellBoard::childRole(int) const {
    return ROLE_SYSTEM_CELL;
}

std::wstring CellBoard::childName(int id) const {
    return child(id).accessibleName();
}

RECT CellBoard::childPlace(int id) const {
    return child(id).shownPlace();
}

LONG CellBoard::childState(int id) const {
    const CellPeer& cell = child(id);
    return (cell.takesFocus() ? STATE_SYSTEM_FOCUSABLE : 0) | (cell.isSeen() ? 0 : STATE_SYSTEM_INVISIBLE) |
           (cell.isUsable() ? 0 : STATE_SYSTEM_UNAVAILABLE);
}

int CellBoard::focusedChild() const {
    return current_->takesFocus() ? numberOf(*current_) : 0;
}

void CellBoard::focusChild(int id) {
    if (canFocus(child(id))) focus(child(id));
}

}  // namespace dravik::win32
