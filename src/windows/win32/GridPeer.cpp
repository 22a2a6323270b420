#include "windows/win32/GridPeer.h"

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/ScrollBar.h"

namespace dravik::win32 {
namespace {

constexpr int kRowPadding = 6;
constexpr int kColumnPadding = 14;
constexpr int kLeastColumnWidth = 34;
constexpr int kProbedRows = 40;

}  // namespace

void GridPeer::lookChanged() {
    Peer::lookChanged();
    if (attached() && window()) fit();
}

HWND GridPeer::make(HWND parent) {
    return makeDrawn(L"DravikGrid", parent, WS_TABSTOP | WS_BORDER | WS_HSCROLL | WS_VSCROLL);
}

ui::Measure GridPeer::ask() {
    const int line = look().lineHeight(wantedFont()) + look().px(kRowPadding);
    return {{look().px(120), 4 * line}, {look().px(260), 9 * line}, true, true, true, true};
}

void GridPeer::show(ui::Change change) {
    switch (change) {
        case ui::Change::Items:
            if (columns_ != model_.columns() || !fitted_ || digits() > fittedDigits_) fit();
            refill();
            break;
        case ui::Change::Appearance:
            DrawnPeer::show(change);
            if (!fitted_) fit();
            refill();
            break;
        case ui::Change::Selection:
            redraw();
            if (const int child = focusedChild(); child > 0)
                NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, child);
            break;
        default:
            DrawnPeer::show(change);
    }
}

std::wstring GridPeer::text(int row, int column) const {
    std::wstring result;
    guarded([&] { result = wide(model_.text(row, column)); });
    return result;
}

void GridPeer::fit() {
    const HFONT font = wantedFont();
    view_.rowHeight = look().lineHeight(font) + look().px(kRowPadding);
    view_.headingHeight = view_.rowHeight + look().px(2);
    columns_ = model_.columns();
    const int last = records();
    std::vector<int> widths;
    for (int column = 0; column < columns_; ++column) {
        long widest = 0;
        for (int row = 0; row <= std::min(last, kProbedRows); ++row)
            widest = std::max(widest, look().textSize(font, text(row, column)).cx);
        if (last > kProbedRows) widest = std::max(widest, look().textSize(font, text(last, column)).cx);
        widths.push_back(
            std::max(static_cast<int>(widest) + look().px(kColumnPadding), look().px(kLeastColumnWidth)));
    }
    fitted_ = last > 0;
    fittedDigits_ = digits();
    view_.setWidths(std::move(widths));
}

void GridPeer::refill() {
    view_.records = records();
    sized();
    NotifyWinEvent(EVENT_OBJECT_REORDER, window(), OBJID_CLIENT, CHILDID_SELF);
}

void GridPeer::sized() {
    RECT client{};
    GetClientRect(window(), &client);
    view_.client = {client.right, client.bottom};
    view_.scrollTo(view_.top(), view_.offset());
    showScrollBars();
    redraw();
}

// Showing one bar takes room from the other direction, and so sizes the window again.
void GridPeer::showScrollBars() {
    if (showingBars_ || !window()) return;
    showingBars_ = true;
    const auto show = [&](int bar, int content, int page, int position) {
        setScrollBar(window(), bar, content, page, position);
        RECT client{};
        GetClientRect(window(), &client);
        view_.client = {client.right, client.bottom};
        view_.scrollTo(view_.top(), view_.offset());
    };
    const bool filled = isFilled();
    show(SB_HORZ, filled ? view_.totalWidth() : 0, static_cast<int>(view_.client.cx), view_.offset());
    show(SB_VERT, view_.records, view_.wholeRows(), view_.top() - 1);
    show(SB_HORZ, filled ? view_.totalWidth() : 0, static_cast<int>(view_.client.cx), view_.offset());
    showingBars_ = false;
}

void GridPeer::scrollTo(int top, int offset) {
    const int topBefore = view_.top();
    const int offsetBefore = view_.offset();
    view_.scrollTo(top, offset);
    if (view_.top() == topBefore && view_.offset() == offsetBefore) return;
    showScrollBars();
    redraw();
}

std::shared_ptr<Peer> make(ui::Grid& model, Page& page) {
    return std::make_shared<GridPeer>(model, page);
}

}  // namespace dravik::win32
