#include "windows/win32/CellPeer.h"

#include <algorithm>

#include "windows/win32/CellBoard.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kFigureHeight = 9;
constexpr int kFigureRoom = 4;
constexpr double kFrameShare = 0.43;

}  // namespace

void CellPeer::join(CellBoard& board) {
    board_ = &board;
    board.add(*this);
}

HWND CellPeer::make(HWND parent) {
    return board_->open(parent);
}

bool CellPeer::isTabStop() const {
    return takesFocus_ && board_->tabStop() == this;
}

void CellPeer::focus() {
    if (window() && takesFocus_) board_->focus(*this);
}

void CellPeer::placed(const ui::Box&) {
    if (attached() && !model_.toolTip().empty()) showTip();
}

void CellPeer::started() {
    if (!isUsable()) board_->showEnabled();
}

void CellPeer::showEnabled() {
    if (!isStarted()) return;
    board_->showEnabled();
    if (hasFocus() && !isUsable()) page().focusLeavesSoon(*this);
}

void CellPeer::lookChanged() {
    forgetMeasure();
    redraw();
}

HFONT CellPeer::wantedFont() const {
    return attached() ? look().font(model_.bold(), model_.fontSize()) : look().font();
}

ui::Measure CellPeer::ask() {
    const SIZE text = look().textSize(wantedFont(), wide(model_.caption()));
    const int height = text.cy + look().px(4);
    const ui::Extent size{std::max<int>(height, text.cx + look().px(8)), height};
    return {{look().px(8), look().px(8)}, size};
}

bool CellPeer::setPlace(const RECT& place) {
    if (EqualRect(&place, &place_)) return false;
    place_ = place;
    return true;
}

RECT CellPeer::shownPlace() const {
    RECT place = place_;
    OffsetRect(&place, -board_->bounds().left, -board_->bounds().top);
    return place;
}

POINT CellPeer::toView(double x, double y) const {
    const RECT own = shownPlace();
    const POINT place = Peer::toView(x, y);
    return {own.left + place.x, own.top + place.y};
}

ModelPlace CellPeer::fromView(POINT place) const {
    const RECT own = shownPlace();
    return Peer::fromView({place.x - own.left, place.y - own.top});
}

POINT CellPeer::centre() const {
    const RECT own = shownPlace();
    return {(own.left + own.right) / 2, (own.top + own.bottom) / 2};
}

void CellPeer::show(ui::Change change) {
    if (!isStarted() && change != ui::Change::ToolTip) return;
    switch (change) {
        case ui::Change::Caption:
        case ui::Change::Name:
            redraw();
            notify(EVENT_OBJECT_NAMECHANGE);
            break;
        case ui::Change::ToolTip:
            showTip();
            if (isStarted()) notify(EVENT_OBJECT_NAMECHANGE);
            break;
        case ui::Change::Appearance:
            redraw();
            sizeChanged();
            break;
        case ui::Change::Visible:
            if (!model_.visible() && hasFocus()) page().focusLeft(*this);
            board_->showVisible();
            redraw();
            sizeChanged();
            break;
        case ui::Change::Focus:
            if (takesFocus_) board_->prefer(*this);
            DrawnPeer::show(change);
            break;
        default:
            DrawnPeer::show(change);
    }
}

void CellPeer::redraw() const {
    if (!IsWindowVisible(window())) return;
    const RECT own = shownPlace();
    InvalidateRect(window(), &own, FALSE);
}

void CellPeer::showTip() {
    page().toolTips().set(window(), static_cast<UINT>(board_->numberOf(*this)), shownPlace(),
                          wide(model_.toolTip()));
}

void CellPeer::notify(DWORD event) const {
    NotifyWinEvent(event, window(), OBJID_CLIENT, board_->numberOf(*this));
}

LRESULT CellPeer::message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            if (takesFocus_) {
                byMouse_ = true;
                board_->focus(*this);
                byMouse_ = false;
            }
            return 0;
        case WM_SETFOCUS:
            focused();
            return 0;
        case WM_KILLFOCUS:
            redraw();
            return 0;
        default:
            return DrawnPeer::message(message, wParam, lParam);
    }
}

void CellPeer::keyPressed(UINT key) {
    if (shiftState() != 0) return;
    if (Peer* next = board_->neighbour(*this, key)) next->focus();
}

void CellPeer::paintAt(HDC dc, const RECT& place) {
    if (!attached()) return;
    const COLORREF ground = look().color(model_.backColor());
    fill(dc, place, ground);
    const int hair = look().px(1);
    frame(dc, place, look().line(ground, kFrameShare), hair);
    if (hasFocus()) {
        frame(dc, place, look().system(COLOR_HIGHLIGHT), 2 * hair);
        RECT inner = place;
        InflateRect(&inner, -2 * hair, -2 * hair);
        frame(dc, inner, readableOn(ground), hair);
    }
    const std::wstring caption = wide(model_.caption());
    HFONT font = wantedFont();
    const SIZE size = look().textSize(font, caption);
    const int room = widthOf(place) - look().px(4);
    if (size.cx > room && size.cx > 0 && room > 0)
        font = look().fontOfHeight(
            model_.bold(), -std::max<int>(look().px(7), look().lineHeight(font) * 4 / 5 * room / size.cx));
    const Selected selected(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, look().textColorOn(model_.backColor(), model_.foreColor()));
    const std::wstring figure = wide(model_.figure());
    const int aside = figure.empty() ? 0 : look().px(kFigureRoom);
    RECT line{place.left, place.top, place.right - aside, place.bottom - aside};
    DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &line,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    if (figure.empty()) return;
    const Selected small(dc, look().fontOfHeight(false, -look().px(kFigureHeight)));
    RECT corner{place.left, place.top, place.right - look().px(2), place.bottom - look().px(1)};
    DrawTextW(dc, figure.c_str(), static_cast<int>(figure.size()), &corner,
              DT_RIGHT | DT_BOTTOM | DT_SINGLELINE | DT_NOPREFIX);
}

std::wstring CellPeer::accessibleName() const {
    if (!attached()) return {};
    if (!model_.accessibleName().empty()) return wide(model_.accessibleName());
    return wide(!model_.toolTip().empty() ? model_.toolTip() : model_.caption());
}

void CellPeer::arrive() {
    focusCame(true);
    if (window() && hasFocus()) focused();
}

void CellPeer::leave() {
    focusWent(true);
    if (window()) redraw();
}

void CellPeer::focused() {
    redraw();
    notify(EVENT_OBJECT_FOCUS);
    if (byMouse_) return;
    fireMouseMove(0, 0, centre());
    if (attached() && window() && IsWindowVisible(window()))
        page().toolTips().showBelow(window(), shownPlace(), wide(model_.toolTip()));
}

std::shared_ptr<Peer> makeCell(ui::Label& model, Page& page, CellBoard& board) {
    auto cell = std::make_shared<CellPeer>(model, page);
    cell->join(board);
    return cell;
}

}  // namespace dravik::win32
