// The native drop-down list and list box.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kDropDownRows = 16;
constexpr int kLeastListWidth = 120;
constexpr int kLeastListRows = 4;
constexpr int kProbedItems = 200;

class ComboBoxPeer : public PeerOf<ui::ComboBox> {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    bool wantsKey(UINT key) const override {
        return (key == VK_RETURN || key == VK_ESCAPE) && SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0);
    }

    // While the list is down, the arrow keys only look for an entry; closing it takes the one.
    void command(WORD code, WORD) override {
        switch (code) {
            case CBN_SELCHANGE:
                if (SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0))
                    looking_ = true;
                else
                    choose();
                break;
            case CBN_SELENDCANCEL:
                looking_ = false;
                showSelection();
                break;
            case CBN_CLOSEUP:
                if (looking_) choose();
                break;
            default:
                break;
        }
    }
    // The height of the window is that of the list that drops down.
    RECT windowPlace(const ui::Box& box) const override {
        RECT place = Peer::windowPlace(box);
        const int rows = std::clamp(model_.count(), 1, kDropDownRows);
        const auto rowHeight = std::max(static_cast<int>(SendMessageW(window(), CB_GETITEMHEIGHT, 0, 0)),
                                        look().lineHeight(wantedFont()));
        place.bottom += rows * rowHeight + look().px(4);
        return place;
    }
    // The window tells the height of its field only. Placing it again would close its list.
    bool stands(const RECT& place) const override { return EqualRect(&place, &place_); }
    void placed(const ui::Box& box) override { place_ = windowPlace(box); }
    void lookChanged() override {
        Peer::lookChanged();
        place_ = {};
    }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(WC_COMBOBOXW, parent, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_HASSTRINGS);
    }
    ui::Measure ask() override {
        const HFONT font = wantedFont();
        int widest = look().averageWidth(font) * 4;
        for (const auto& item : model_.items())
            widest = std::max<int>(widest, look().textSize(font, wide(item)).cx);
        // As high as the text boxes beside it; what the control makes of that is its own business.
        const int field = look().lineHeight(font) + look().px(2);
        if (SendMessageW(window(), CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0) != field)
            SendMessageW(window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
        RECT place{};
        GetWindowRect(window(), &place);
        const int height = std::max(heightOf(place), field);
        const int width = widest + look().px(14) + GetSystemMetrics(SM_CXVSCROLL);
        return {{look().px(44), height}, {width, height}, true, true, false, false};
    }
    void show(ui::Change change) override {
        if (change == ui::Change::Items) {
            SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
            SendMessageW(window(), CB_RESETCONTENT, 0, 0);
            for (const auto& item : model_.items())
                SendMessageW(window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item).c_str()));
            SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
            InvalidateRect(window(), nullptr, TRUE);
            showSelection();
            sizeChanged();
            page().arrangeSoon();
        } else if (change == ui::Change::Selection) {
            showSelection();
        } else {
            Peer::show(change);
        }
    }
    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        // The wheel over a closed list is meant for what it stands in.
        if (message == WM_MOUSEWHEEL && !SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0)) return 0;
        if (message == WM_GETDLGCODE) return DLGC_WANTARROWS | DLGC_WANTCHARS;
        return Peer::message(message, wParam, lParam);
    }

  private:
    void showSelection() { SendMessageW(window(), CB_SETCURSEL, static_cast<WPARAM>(model_.listIndex()), 0); }
    void choose() {
        looking_ = false;
        const auto index = static_cast<int>(SendMessageW(window(), CB_GETCURSEL, 0, 0));
        if (index >= 0) act([&] { model_.setListIndex(index); });
    }

    RECT place_{};
    bool looking_ = false;
};

class ListBoxPeer : public PeerOf<ui::ListBox> {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    bool pressEnter() override {
        if (model_.listIndex() < 0) return false;
        act([this] { model_.doubleClick(); });
        return true;
    }
    void command(WORD code, WORD) override {
        if (code == LBN_SELCHANGE) {
            const auto index = static_cast<int>(SendMessageW(window(), LB_GETCURSEL, 0, 0));
            if (index >= 0) act([&] { model_.setListIndex(index); });
        } else if (code == LBN_DBLCLK) {
            act([this] { model_.doubleClick(); });
        }
    }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(WC_LISTBOXW, parent,
                          WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS,
                          WS_EX_CLIENTEDGE);
    }
    ui::Measure ask() override {
        const HFONT font = wantedFont();
        int widest = look().px(kLeastListWidth);
        for (int i = 0; i < std::min(model_.count(), kProbedItems); ++i)
            widest = std::max<int>(
                widest, look().textSize(font, wide(model_.items()[static_cast<std::size_t>(i)])).cx +
                            look().px(10) + GetSystemMetrics(SM_CXVSCROLL));
        const int height = kLeastListRows * look().lineHeight(font) + look().px(6);
        return {{look().px(kLeastListWidth), height}, {widest, height}, true, true, true, true};
    }
    void show(ui::Change change) override {
        if (change == ui::Change::Items) {
            SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
            SendMessageW(window(), LB_RESETCONTENT, 0, 0);
            for (const auto& item : model_.items())
                SendMessageW(window(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item).c_str()));
            showSelection();
            SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
            InvalidateRect(window(), nullptr, TRUE);
        } else if (change == ui::Change::Selection) {
            showSelection();
        } else {
            Peer::show(change);
        }
    }

  private:
    void showSelection() { SendMessageW(window(), LB_SETCURSEL, static_cast<WPARAM>(model_.listIndex()), 0); }
};

}  // namespace

std::shared_ptr<Peer> make(ui::ComboBox& model, Page& page) {
    return std::make_shared<ComboBoxPeer>(model, page);
}

std::shared_ptr<Peer> make(ui::ListBox& model, Page& page) {
    return std::make_shared<ListBoxPeer>(model, page);
}

}  // namespace dravik::win32
