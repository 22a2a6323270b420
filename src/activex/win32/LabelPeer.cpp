// A line of text: the native static control, which a screen reader takes for the caption of what follows,
// drawn here so that a text with too little room is cut with an ellipsis and told by its tool tip.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "activex/win32/Page.h"
#include "activex/win32/Peers.h"
#include "activex/win32/WinText.h"

namespace dravik {
namespace {

constexpr int kLeastCharacters = 6;

class LabelPeer : public PeerOf<Label> {
  public:
    // "&" marks an access key only in captions that are there from the start; later ones are data.
    LabelPeer(Label& model, Page& page)
        : PeerOf(model, page),
          marks_(model.usesMnemonic() && model.caption().find('&') != std::string::npos) {}

    wchar_t mnemonic() const override { return marks_ ? mnemonicOf(wide(model_.caption())) : L'\0'; }
    void placed(const Box&) override { showTip(); }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(WC_STATICW, parent, SS_LEFT | SS_NOTIFY | SS_NOPREFIX);
    }
    HFONT wantedFont() const override {
        return attached() ? look().font(model_.bold(), model_.fontSize()) : look().font();
    }
    Measure ask() override {
        const HFONT font = wantedFont();
        const SIZE text = look().textSize(font, shownText());
        const Extent size{text.cx + (text.cx > 0 ? look().px(1) : 0), text.cy};
        return {size, size, true, true, true, false, look().averageWidth(font) * kLeastCharacters};
    }

    void show(Change change) override {
        switch (change) {
            case Change::Caption:
                SetWindowTextW(window(), shownText().c_str());
                InvalidateRect(window(), nullptr, FALSE);
                sizeChanged();
                showTip();
                break;
            case Change::ToolTip:
                showTip();
                break;
            case Change::Enabled:
                Peer::show(change);
                InvalidateRect(window(), nullptr, FALSE);
                break;
            default:
                Peer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_ERASEBKGND:
                return TRUE;
            case WM_PAINT: {
                const BufferedPaint paint(window());
                paintIn(paint.dc(), paint.client());
                return 0;
            }
            case WM_PRINTCLIENT: {
                RECT client{};
                GetClientRect(window(), &client);
                paintIn(reinterpret_cast<HDC>(wParam), client);
                return 0;
            }
            case WM_SIZE:
                InvalidateRect(window(), nullptr, FALSE);
                break;
            default:
                break;
        }
        return Peer::message(message, wParam, lParam);
    }

  private:
    std::wstring shownText() const {
        const std::wstring caption = wide(model_.caption());
        return marks_ ? withoutMnemonic(caption) : caption;
    }

    void showTip() {
        if (!attached()) return;
        RECT client{};
        GetClientRect(window(), &client);
        const std::wstring text = shownText();
        const bool cut = look().textSize(wantedFont(), text).cx > client.right;
        page().toolTips().set(window(), cut ? text : wide(model_.toolTip()));
    }

    void paintIn(HDC dc, RECT client) {
        if (!attached()) return;
        fill(dc, client, look().color(model_.backColor()));
        const Selected font(dc, wantedFont());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, IsWindowEnabled(window())
                             ? look().textColorOn(model_.backColor(), model_.foreColor())
                             : look().disabledText());
        UINT flags =
            DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | (marks_ ? 0u : static_cast<UINT>(DT_NOPREFIX));
        if (model_.alignment() == Label::Alignment::Center) flags |= DT_CENTER;
        if (model_.alignment() == Label::Alignment::End) flags |= DT_RIGHT;
        const std::wstring caption = wide(model_.caption());
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &client, flags);
    }

    const bool marks_;
};

}  // namespace

std::shared_ptr<Peer> makeLabel(Label& model, Page& page) {
    return std::make_shared<LabelPeer>(model, page);
}

}  // namespace dravik
