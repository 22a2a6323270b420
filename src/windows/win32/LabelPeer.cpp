// A line of text, drawn here so that one with too little room is cut with an ellipsis and told by its tool
// tip. A screen reader takes it for the caption of what follows.
#include <algorithm>

#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kLeastCharacters = 6;

class LabelPeer : public PeerOf<ui::Label, DrawnPeer>, private AccessibleContent {
  public:
    // "&" marks an access key only in captions that are there from the start; later ones are data.
    LabelPeer(ui::Label& model, Page& page)
        : PeerOf(model, page),
          marks_(model.usesMnemonic() && model.caption().find('&') != std::string::npos) {}

    wchar_t mnemonic() const override { return marks_ ? mnemonicOf(wide(model_.caption())) : L'\0'; }
    void placed(const ui::Box&) override { showTip(); }

  protected:
    HWND make(HWND parent) override { return makeDrawn(L"DravikLabel", parent, 0, shownText()); }
    HFONT wantedFont() const override {
        return attached() ? look().font(model_.bold(), model_.fontSize()) : look().font();
    }
    ui::Measure ask() override {
        const HFONT font = wantedFont();
        const SIZE text = look().textSize(font, shownText());
        const ui::Extent size{text.cx + (text.cx > 0 ? look().px(1) : 0), text.cy};
        return {size, size, true, true, true, false, look().averageWidth(font) * kLeastCharacters};
    }

    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption:
                showText(shownText());
                redraw();
                sizeChanged();
                showTip();
                break;
            case ui::Change::ToolTip:
                showTip();
                break;
            default:
                DrawnPeer::show(change);
        }
    }

    void paint(HDC dc, const RECT& client, const RECT&) override {
        if (!attached()) return;
        fill(dc, client, look().color(model_.backColor()));
        const Selected font(dc, wantedFont());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, IsWindowEnabled(window())
                             ? look().textColorOn(model_.backColor(), model_.foreColor())
                             : look().disabledText());
        UINT flags =
            DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | (marks_ ? 0u : static_cast<UINT>(DT_NOPREFIX));
        if (model_.alignment() == ui::Label::Alignment::Center) flags |= DT_CENTER;
        if (model_.alignment() == ui::Label::Alignment::End) flags |= DT_RIGHT;
        const std::wstring caption = wide(model_.caption());
        RECT place = client;
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &place, flags);
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        // What stands before an edit box is its name, for screen readers.
        return message == WM_GETDLGCODE ? DLGC_STATIC : DrawnPeer::message(message, wParam, lParam);
    }

    AccessibleContent* accessibleContent() override { return this; }

  private:
    LONG role() const override { return ROLE_SYSTEM_STATICTEXT; }
    LONG state() const override { return STATE_SYSTEM_READONLY; }
    std::wstring name() const override {
        return model_.accessibleName().empty() ? shownText() : wide(model_.accessibleName());
    }

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

    const bool marks_;
};

}  // namespace

std::shared_ptr<Peer> make(ui::Label& model, Page& page) {
    return std::make_shared<LabelPeer>(model, page);
}

}  // namespace dravik::win32
