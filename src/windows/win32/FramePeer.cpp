// A group box, the parent of what stands in it. It is drawn here in the colours of the page: the system's
// themes draw the caption of theirs in a colour of their own, whatever is behind it.
#include <algorithm>

#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kBelowCaption = 5;
constexpr int kCaptionIndent = 8;
constexpr int kCaptionGap = 2;
constexpr double kLineShare = 0.3;

class FramePeer : public PeerOf<ui::Frame, DrawnPeer>, private AccessibleContent {
  public:
    using PeerOf::PeerOf;

    void placed(const ui::Box& box) override {
        if (!geometry_ || !attached()) return;
        const RECT edge = margins();
        page().place(geometry_->place(
            {edge.left, edge.top, box.width - edge.left - edge.right, box.height - edge.top - edge.bottom}));
    }

  protected:
    HWND make(HWND parent) override {
        return makeDrawn(L"DravikFrame", parent, WS_CLIPCHILDREN, wide(model_.caption()),
                         WS_EX_CONTROLPARENT);
    }
    void started() override { page().addPeers(model_.layout(), window(), this); }

    ui::Measure ask() override {
        geometry_.emplace(page().geometryOf(model_.layout()));
        const RECT edge = margins();
        const int wide = edge.left + edge.right;
        const int high = edge.top + edge.bottom;
        const ui::Extent least = geometry_->minimum();
        const ui::Extent wanted = geometry_->preferred();
        const int caption = look().textSize(wantedFont(), captionText()).cx + look().px(24);
        return {{std::max(least.width + wide, caption), least.height + high},
                {std::max(wanted.width + wide, caption), wanted.height + high}};
    }

    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption:
                showText(wide(model_.caption()));
                redraw();
                break;
            case ui::Change::Enabled:
                DrawnPeer::show(change);
                for (const auto& peer : page().peers())
                    if (stands(*peer) && peer->window()) peer->showEnabled();
                break;
            default:
                DrawnPeer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (const auto result = page().fromChild(message, wParam, lParam)) return *result;
        return message == WM_NCHITTEST ? HTCLIENT : DrawnPeer::message(message, wParam, lParam);
    }
    void paint(HDC dc, const RECT& client, const RECT&) override {
        const COLORREF ground = look().background();
        fill(dc, client, ground);
        const Selected font(dc, wantedFont());
        const int high = look().lineHeight(wantedFont());
        frame(dc, {client.left, client.top + high / 2, client.right, client.bottom},
              look().line(ground, kLineShare), std::max(look().dpi() / kUsualDpi, 1));
        if (!attached() || model_.caption().empty()) return;
        const std::wstring caption = wide(model_.caption());
        const LONG left = client.left + look().px(kCaptionIndent);
        const LONG right = left + look().textSize(wantedFont(), captionText()).cx;
        const int gap = look().px(kCaptionGap);
        fill(dc, {left - gap, client.top, right + gap, client.top + high}, ground);
        RECT place{left, client.top, right, client.top + high};
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc,
                     IsWindowEnabled(window()) ? look().color(ui::kWindowTextColor) : look().disabledText());
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &place, DT_SINGLELINE | DT_NOCLIP);
    }

    AccessibleContent* accessibleContent() override { return this; }

  private:
    LONG role() const override { return ROLE_SYSTEM_GROUPING; }
    std::wstring name() const override {
        return model_.accessibleName().empty() ? captionText() : wide(model_.accessibleName());
    }

    std::wstring captionText() const { return withoutMnemonic(wide(model_.caption())); }

    RECT margins() const {
        const int margin = look().px(ui::kMargin);
        return {margin, look().lineHeight(wantedFont()) + look().px(kBelowCaption), margin, margin};
    }

    bool stands(const Peer& peer) const {
        for (const Peer* outer = peer.container(); outer; outer = outer->container())
            if (outer == this) return true;
        return false;
    }

    std::optional<ui::LayoutGeometry> geometry_;
};

}  // namespace

std::shared_ptr<Peer> make(ui::Frame& model, Page& page) {
    return std::make_shared<FramePeer>(model, page);
}

}  // namespace dravik::win32
