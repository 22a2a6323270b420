// The native toolbar. Its buttons are drawn here, so that their pictures are sharp at every display scale and
// take the colours of the page.

#include <algorithm>

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/PictureImage.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kIconSide = 18;
constexpr int kPadding = 5;
constexpr int kGap = 4;
constexpr double kDisabledOpacity = 0.4;

class ToolbarPeer : public PeerOf<ui::Toolbar> {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    bool pressEnter() override {
        const auto hot = static_cast<int>(SendMessageW(window(), TB_GETHOTITEM, 0, 0));
        if (hot < 0 || hot >= static_cast<int>(model_.buttons().size())) return false;
        press(static_cast<std::size_t>(hot));
        return true;
    }

    void command(WORD, WORD id) override {
        if (id >= 1 && id <= model_.buttons().size()) press(id - 1u);
    }

    std::optional<LRESULT> notify(NMHDR& header) override {
        switch (header.code) {
            case static_cast<UINT>(NM_CUSTOMDRAW):
                return customDraw(reinterpret_cast<NMTBCUSTOMDRAW&>(header));
            case static_cast<UINT>(TBN_GETINFOTIPW):
                giveTip(reinterpret_cast<NMTBGETINFOTIPW&>(header));
                return 0;
            default:
                return std::nullopt;
        }
    }

    void lookChanged() override {
        icons_.clear();
        Peer::lookChanged();
        if (window() && attached()) sizeButtons();
    }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(TOOLBARCLASSNAMEW, parent,
                          WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | TBSTYLE_CUSTOMERASE |
                              CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER);
    }
    ui::Measure ask() override {
        int width = 0;
        for (const auto& button : model_.buttons()) width += widthFor(*button);
        const ui::Extent size{width, buttonHeight()};
        return {size, size, true, true, false, false};
    }

    void show(ui::Change change) override {
        if (change == ui::Change::Items) addButtons();
        for (std::size_t i = 0; i < shown_; ++i) showButton(i);
        Peer::show(change);
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_GETDLGCODE:
                return DLGC_WANTARROWS;
            case WM_ERASEBKGND:
                fillGround(reinterpret_cast<HDC>(wParam));
                return TRUE;
            case WM_KEYDOWN:
                if (moveByKey(static_cast<UINT>(wParam))) return 0;
                break;
            case WM_SETFOCUS:
                if (SendMessageW(window(), TB_GETHOTITEM, 0, 0) < 0) makeHot(0, 1);
                break;
            case WM_KILLFOCUS:
                SendMessageW(window(), TB_SETHOTITEM, static_cast<WPARAM>(-1), 0);
                break;
            default:
                break;
        }
        return Peer::message(message, wParam, lParam);
    }

  private:
    void fillGround(HDC dc) const {
        RECT client{};
        GetClientRect(window(), &client);
        fill(dc, client, look().background());
    }

    void press(std::size_t index) {
        const auto self = shared_from_this();
        act([&] { model_.buttons()[index]->press(); });
        if (attached() && window()) showButton(index);  // the control has flipped a check button by itself
    }

    void giveTip(NMTBGETINFOTIPW& tip) const {
        if (tip.iItem < 1 || tip.iItem > static_cast<int>(model_.buttons().size()) || !tip.pszText) return;
        const std::wstring text = tipOf(*model_.buttons()[static_cast<std::size_t>(tip.iItem - 1)]);
        lstrcpynW(tip.pszText, text.c_str(), tip.cchTextMax);
    }

    static std::wstring tipOf(const ui::ToolButton& button) {
        return wide(button.toolTip().empty() ? button.caption : button.toolTip());
    }
    int buttonHeight() const {
        return std::max(look().px(kIconSide), look().lineHeight(wantedFont())) + look().px(8);
    }
    int widthFor(const ui::ToolButton& button) const {
        return look().px(2 * kPadding + kIconSide + kGap) +
               look().textSize(wantedFont(), wide(button.caption)).cx + look().px(2);
    }

    void addButtons() {
        SendMessageW(window(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        SendMessageW(window(), CCM_SETVERSION, 5, 0);
        for (; shown_ < model_.buttons().size(); ++shown_) {
            const ui::ToolButton& button = *model_.buttons()[shown_];
            std::wstring caption = wide(button.caption);
            TBBUTTON added{};
            added.iBitmap = I_IMAGENONE;
            added.idCommand = static_cast<int>(shown_ + 1);
            added.fsState = TBSTATE_ENABLED;
            added.fsStyle = button.style == ui::ToolButton::Style::Check ? BTNS_CHECK : BTNS_BUTTON;
            added.fsStyle |= BTNS_NOPREFIX;
            added.iString = reinterpret_cast<INT_PTR>(caption.c_str());
            SendMessageW(window(), TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&added));
        }
        sizeButtons();
        sizeChanged();
    }

    void sizeButtons() {
        SendMessageW(window(), TB_SETBUTTONSIZE, 0, MAKELPARAM(look().px(60), buttonHeight()));
        for (std::size_t i = 0; i < shown_; ++i) {
            TBBUTTONINFOW info{};
            info.cbSize = sizeof info;
            info.dwMask = TBIF_SIZE;
            info.cx = static_cast<WORD>(widthFor(*model_.buttons()[i]));
            SendMessageW(window(), TB_SETBUTTONINFOW, i + 1, reinterpret_cast<LPARAM>(&info));
        }
    }

    void showButton(std::size_t index) {
        const ui::ToolButton& button = *model_.buttons()[index];
        const LPARAM enabled = button.enabled();
        const LPARAM pressed = button.pressed();
        if (SendMessageW(window(), TB_ISBUTTONENABLED, index + 1, 0) != enabled)
            SendMessageW(window(), TB_ENABLEBUTTON, index + 1, MAKELPARAM(enabled, 0));
        if (SendMessageW(window(), TB_ISBUTTONCHECKED, index + 1, 0) != pressed)
            SendMessageW(window(), TB_CHECKBUTTON, index + 1, MAKELPARAM(pressed, 0));
    }

    LRESULT customDraw(const NMTBCUSTOMDRAW& draw) {
        if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
        if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
        const std::size_t index = draw.nmcd.dwItemSpec - 1;
        if (!attached() || index >= model_.buttons().size()) return CDRF_DODEFAULT;
        RECT place{};
        SendMessageW(window(), TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        drawButton(draw.nmcd.hdc, index, place, draw.nmcd.uItemState);
        return CDRF_SKIPDEFAULT;
    }

    void drawButton(HDC dc, std::size_t index, RECT place, UINT state) {
        const ui::ToolButton& button = *model_.buttons()[index];
        const bool enabled = button.enabled() && IsWindowEnabled(window());
        const bool down = (state & CDIS_SELECTED) != 0 || button.pressed();
        const bool hot = enabled && ((state & CDIS_HOT) != 0 || SendMessageW(window(), TB_GETHOTITEM, 0, 0) ==
                                                                    static_cast<LRESULT>(index));
        const COLORREF ground = look().background();
        const COLORREF text = look().color(ui::kButtonTextColor);
        fill(dc, place, ground);
        InflateRect(&place, -1, -1);
        if (down || hot) {
            const double share = look().highContrast() ? 0 : down ? 0.12 : 0.1;
            fill(dc, place, blend(ground, down ? text : look().system(COLOR_HIGHLIGHT), share));
            frame(dc, place, hasFocus() && hot ? look().system(COLOR_HIGHLIGHT) : look().line(ground, 0.35),
                  look().px(1));
        }
        if (icons_.size() <= index) icons_.resize(model_.buttons().size());
        const int side = look().px(kIconSide);
        if (!icons_[index]) icons_[index] = pictureImage(button.picture, side, look());
        const int left = place.left + look().px(kPadding) - 1;
        drawPicture(dc, *icons_[index], left, (place.top + place.bottom - side) / 2,
                    enabled ? 1 : kDisabledOpacity);
        RECT words{left + side + look().px(kGap), place.top, place.right, place.bottom};
        const Selected font(dc, wantedFont());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, enabled ? text : look().disabledText());
        const std::wstring caption = wide(button.caption);
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &words,
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }

    bool makeHot(int from, int step) {
        for (int i = from; i >= 0 && i < static_cast<int>(model_.buttons().size()); i += step)
            if (model_.buttons()[static_cast<std::size_t>(i)]->enabled()) {
                SendMessageW(window(), TB_SETHOTITEM, static_cast<WPARAM>(i), 0);
                InvalidateRect(window(), nullptr, FALSE);
                return true;
            }
        return false;
    }

    bool moveByKey(UINT key) {
        const auto hot = static_cast<int>(SendMessageW(window(), TB_GETHOTITEM, 0, 0));
        switch (key) {
            case VK_LEFT:
                makeHot(hot - 1, -1);
                return true;
            case VK_RIGHT:
                makeHot(hot + 1, 1);
                return true;
            case VK_HOME:
                makeHot(0, 1);
                return true;
            case VK_END:
                makeHot(static_cast<int>(model_.buttons().size()) - 1, -1);
                return true;
            case VK_SPACE:
                return pressEnter();
            default:
                return false;
        }
    }

    std::size_t shown_ = 0;
    std::vector<std::unique_ptr<Canvas>> icons_;
};

}  // namespace

std::shared_ptr<Peer> make(ui::Toolbar& model, Page& page) {
    return std::make_shared<ToolbarPeer>(model, page);
}

}  // namespace dravik::win32
