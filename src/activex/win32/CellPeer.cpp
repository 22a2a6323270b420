// A cell of the character overview or of a feature array: a flat square with a border, one short text and its
// own back colour, which the keyboard reaches too.
#include <algorithm>

#include "activex/win32/Accessible.h"
#include "activex/win32/CellGroup.h"
#include "activex/win32/DrawnPeer.h"
#include "activex/win32/Page.h"
#include "activex/win32/Peers.h"
#include "activex/win32/WinText.h"

namespace dravik {
namespace {

constexpr double kFrameShare = 0.43;

class CellPeer : public PeerOf<Label, DrawnPeer>, private AccessibleContent {
  public:
    CellPeer(Label& model, Page& page) : PeerOf(model, page), takesFocus_(!model.caption().empty()) {}

    bool takesFocus() const override { return takesFocus_; }
    bool isTabStop() const override { return takesFocus_ && (!group_ || group_->isTabStop(*this)); }
    void join(CellGroup& group) {
        group_ = &group;
        group.add(*this);
    }

  protected:
    HWND make(HWND parent) override {
        return makeDrawn(L"DravikCell", parent, takesFocus_ ? WS_TABSTOP : 0u, wide(model_.caption()));
    }
    HFONT wantedFont() const override {
        return attached() ? look().font(model_.bold(), model_.fontSize()) : look().font();
    }
    Measure ask() override {
        const SIZE text = look().textSize(wantedFont(), wide(model_.caption()));
        const int height = text.cy + look().px(4);
        const Extent size{std::max<int>(height, text.cx + look().px(8)), height};
        return {{look().px(8), look().px(8)}, size};
    }

    void show(Change change) override {
        switch (change) {
            case Change::Caption:
                showText(wide(model_.caption()));
                redraw();
                NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
                break;
            case Change::ToolTip:
                DrawnPeer::show(change);
                NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
                break;
            default:
                DrawnPeer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_LBUTTONDOWN:
                if (takesFocus_) {
                    byMouse_ = true;
                    SetFocus(window());
                    byMouse_ = false;
                }
                return 0;
            case WM_SETFOCUS:
                focused();
                return 0;
            default:
                return DrawnPeer::message(message, wParam, lParam);
        }
    }
    void menuKeyPressed() override { fireMouseDown(kRightButton, 0, centre()); }
    void keyPressed(UINT key) override {
        if (!group_ || shiftState() != 0) return;
        if (Peer* next = group_->neighbour(*this, key)) next->focus();
    }

    AccessibleContent* accessibleContent() override { return this; }

    void paint(HDC dc, const RECT& client, const RECT&) override {
        if (!attached()) return;
        const COLORREF ground = look().color(model_.backColor());
        fill(dc, client, ground);
        const int hair = look().px(1);
        frame(dc, client, look().line(ground, kFrameShare), hair);
        if (hasFocus()) {
            frame(dc, client, GetSysColor(COLOR_HIGHLIGHT), 2 * hair);
            RECT inner = client;
            InflateRect(&inner, -2 * hair, -2 * hair);
            frame(dc, inner, readableOn(ground), hair);
        }
        const std::wstring caption = wide(model_.caption());
        HFONT font = wantedFont();
        const SIZE size = look().textSize(font, caption);
        const int room = widthOf(client) - look().px(4);
        if (size.cx > room && size.cx > 0 && room > 0)
            font = look().fontOfHeight(
                model_.bold(),
                -std::max<int>(look().px(7), look().lineHeight(font) * 4 / 5 * room / size.cx));
        const Selected selected(dc, font);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, look().textColorOn(model_.backColor(), model_.foreColor()));
        RECT place = client;
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &place,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
    }

  private:
    LONG role() const override { return ROLE_SYSTEM_CELL; }
    std::wstring name() const override {
        if (!model_.accessibleName().empty()) return wide(model_.accessibleName());
        return wide(!model_.toolTip().empty() ? model_.toolTip() : model_.caption());
    }

    void focused() {
        if (group_) group_->setTabStop(*this);
        redraw();
        NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, CHILDID_SELF);
        if (byMouse_) return;
        fireMouseMove(0, 0, centre());
        if (attached() && window() && IsWindowVisible(window()))
            page().toolTips().showBelow(window(), wide(model_.toolTip()));
    }

    const bool takesFocus_;
    CellGroup* group_ = nullptr;
    bool byMouse_ = false;
};

}  // namespace

std::shared_ptr<Peer> makeCell(Label& model, Page& page) {
    return std::make_shared<CellPeer>(model, page);
}

void joinCells(Peer& cell, CellGroup& group) {
    static_cast<CellPeer&>(cell).join(group);
}

}  // namespace dravik
