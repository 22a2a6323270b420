// Native progress bar, status bar with keyed panels, and up-down control.

#include <algorithm>
#include <cmath>

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kSteps = 1000;
constexpr int kPanelPadding = 12;

class ProgressBarPeer : public PeerOf<ui::ProgressBar> {
  public:
    using PeerOf::PeerOf;

  protected:
    HWND make(HWND parent) override { return makeWindow(PROGRESS_CLASSW, parent, PBS_SMOOTH); }

    ui::Measure ask() override {
        const int height = look().lineHeight(wantedFont()) + look().px(6);
        return {{look().px(40), height}, {look().px(120), height}, true, true, false, true};
    }
    void show(ui::Change change) override {
        if (change == ui::Change::Value) {
            SendMessageW(window(), PBM_SETRANGE32, 0, kSteps);
            SendMessageW(window(), PBM_SETPOS,
                         static_cast<WPARAM>(std::lround(model_.value() * kSteps / 100)), 0);
        } else {
            Peer::show(change);
        }
    }
};

class StatusBarPeer : public PeerOf<ui::StatusBar> {
  public:
    using PeerOf::PeerOf;

    void placed(const ui::Box&) override { showPanels(); }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(STATUSCLASSNAMEW, parent, CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER);
    }
    ui::Measure ask() override {
        const int height = look().lineHeight(wantedFont()) + look().px(8);
        int width = 0;
        for (const auto& panel : model_.panels()) width += widthFor(*panel);
        return {{width, height}, {width, height}, true, true, false, true};
    }
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Items:
            case ui::Change::Caption:
            case ui::Change::ToolTip:
                if (change == ui::Change::ToolTip) Peer::show(change);
                showPanels();
                sizeChanged();
                break;
            default:
                Peer::show(change);
        }
    }

  private:
    int widthFor(const ui::StatusPanel& panel) const { return pixels(panel.width, look().dpi()); }

    // A long text must not take the room of the panel that stretches: what does not fit is cut and told by
    // the tool tip.
    void showPanels() {
        if (!attached() || model_.panels().empty()) return;
        RECT client{};
        GetClientRect(window(), &client);
        const HFONT font = wantedFont();
        std::vector<int> widths;
        int left = client.right;
        int stretching = 0;
        for (const auto& panel : model_.panels()) {
            const int least = widthFor(*panel);
            const int wanted = look().textSize(font, textOf(*panel)).cx + look().px(kPanelPadding);
            widths.push_back(panel->stretches ? least : std::clamp(wanted, least, least * 3 / 2));
            left -= widths.back();
            stretching += panel->stretches;
        }
        std::vector<int> edges;
        int edge = 0;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (model_.panels()[i]->stretches && stretching > 0 && left > 0) {
                const int share = left / stretching--;
                widths[i] += share;
                left -= share;
            }
            edges.push_back(edge += widths[i]);
        }
        edges.back() = std::max<int>(edges.back(), client.right);
        SendMessageW(window(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
        for (std::size_t i = 0; i < widths.size(); ++i)
            showPanel(i, edges[i] - widths[i], widths[i], client, font);
    }

    void showPanel(std::size_t index, int left, int width, const RECT& client, HFONT font) {
        const ui::StatusPanel& panel = *model_.panels()[index];
        const std::wstring text = textOf(panel);
        std::wstring shown = text;
        const int room = width - look().px(kPanelPadding) + look().px(4);
        while (!shown.empty() && room > 0 && look().textSize(font, shown).cx > room) {
            shown.resize(shown.size() -
                         std::min<std::size_t>(shown.size(), shown.back() == L'\u2026' ? 2 : 1));
            shown += L'\u2026';
            if (shown.size() == 1) break;
        }
        const std::wstring now = shownText(index);
        if (now != shown) SendMessageW(window(), SB_SETTEXTW, index, reinterpret_cast<LPARAM>(shown.c_str()));
        const std::wstring tip = shown != text ? text : wide(panel.toolTip());
        page().toolTips().set(window(), static_cast<UINT>(index + 1), {left, 0, left + width, client.bottom},
                              tip);
    }

    std::wstring shownText(std::size_t index) const {
        const auto length = LOWORD(SendMessageW(window(), SB_GETTEXTLENGTHW, index, 0));
        std::wstring text(length + 1u, L'\0');
        SendMessageW(window(), SB_GETTEXTW, index, reinterpret_cast<LPARAM>(text.data()));
        text.resize(length);
        return text;
    }

    static std::wstring textOf(const ui::StatusPanel& panel) {
        std::wstring text = wide(panel.text());
        std::replace(text.begin(), text.end(), L'\r', L' ');
        std::replace(text.begin(), text.end(), L'\t', L' ');
        return text;
    }
};

// Arrow keys and the wheel move it too.
class UpDownPeer : public PeerOf<ui::UpDown> {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    std::optional<LRESULT> notify(NMHDR& header) override {
        if (header.code != static_cast<UINT>(UDN_DELTAPOS)) return std::nullopt;
        move(reinterpret_cast<NMUPDOWN&>(header).iDelta > 0 ? 1 : -1);
        return TRUE;  // the model has moved it already
    }

  protected:
    HWND make(HWND parent) override { return makeWindow(UPDOWN_CLASSW, parent, WS_TABSTOP); }

    ui::Measure ask() override {
        const ui::Extent size{look().px(18), look().px(26)};
        return {size, size, true, false, false, false};
    }
    void show(ui::Change change) override {
        if (change == ui::Change::Value) {
            SendMessageW(window(), UDM_SETRANGE32, static_cast<WPARAM>(model_.minimum), model_.maximum);
            SendMessageW(window(), UDM_SETPOS32, 0, model_.value());
        } else {
            Peer::show(change);
        }
    }
    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_GETDLGCODE:
                return DLGC_WANTARROWS;
            case WM_KEYDOWN:
                if (wParam != VK_UP && wParam != VK_DOWN) break;
                move(wParam == VK_UP ? 1 : -1);
                return 0;
            case WM_MOUSEWHEEL:
                move(static_cast<short>(HIWORD(wParam)) > 0 ? 1 : -1);
                return 0;
            case WM_LBUTTONDOWN:
                SetFocus(window());
                break;
            case WM_SETFOCUS:
            case WM_KILLFOCUS:
                InvalidateRect(window(), nullptr, FALSE);
                break;
            case WM_PAINT: {
                const LRESULT result = defaultAnswer(message, wParam, lParam);
                if (hasFocus()) frameForFocus();
                return result;
            }
            default:
                break;
        }
        return Peer::message(message, wParam, lParam);
    }

  private:
    void frameForFocus() const {
        const HDC dc = GetDC(window());
        RECT client{};
        GetClientRect(window(), &client);
        frame(dc, client, look().system(COLOR_HIGHLIGHT), look().px(1));
        ReleaseDC(window(), dc);
    }
    void move(int direction) {
        act([&] { model_.setValue(model_.value() + direction * model_.increment); });
    }
};

}  // namespace

std::shared_ptr<Peer> make(ui::ProgressBar& model, Page& page) {
    return std::make_shared<ProgressBarPeer>(model, page);
}

std::shared_ptr<Peer> make(ui::StatusBar& model, Page& page) {
    return std::make_shared<StatusBarPeer>(model, page);
}

std::shared_ptr<Peer> make(ui::UpDown& model, Page& page) {
    return std::make_shared<UpDownPeer>(model, page);
}

}  // namespace dravik::win32
