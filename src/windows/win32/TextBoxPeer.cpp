// The native edit control. A locked box in the colour of its page is a caption or a result: it has no frame
// and is as wide as its text.

#include <algorithm>

#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kUsualWidth = 120;
constexpr int kLeastWidth = 40;
constexpr int kFlatMargin = 8;

// "" where it holds no text.
std::wstring clipboardText(HWND window) {
    std::wstring text;
    if (!OpenClipboard(window)) return text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT))
        if (const auto* start = static_cast<const wchar_t*>(GlobalLock(data))) {
            text = start;
            GlobalUnlock(data);
        }
    CloseClipboard();
    return text;
}

class TextBoxPeer : public PeerOf<ui::TextBox> {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    bool isTabStop() const override { return !isFlat(); }

    void command(WORD code, WORD) override {
        if (code != EN_CHANGE || showing_) return;
        act([this] {
            const std::string text = utf8(windowText(window()));
            model_.edit(text);
            if (model_.text() != text) show(ui::Change::Caption);
        });
    }
    HBRUSH colors(HDC dc) override {
        if (!model_.enabled() && ui::isSystemColor(model_.backColor())) {
            SetTextColor(dc, look().disabledText());
            SetBkColor(dc, look().background());
            return look().brush(look().background());
        }
        const COLORREF ground = isFlat() ? look().background() : look().color(model_.backColor());
        SetTextColor(dc, look().textColorOn(model_.backColor(), model_.foreColor()));
        SetBkColor(dc, ground);
        return look().brush(ground);
    }
    // The text of a flat box stands on the line of the captions beside it.
    RECT windowPlace(const ui::Box& box) const override {
        RECT place = Peer::windowPlace(box);
        if (!isFlat()) return place;
        const int line = look().lineHeight(wantedFont());
        place.top += (heightOf(place) - line) / 2;
        place.bottom = place.top + line;
        return place;
    }
    void pressMnemonic() override {
        focus();
        SendMessageW(window(), EM_SETSEL, 0, -1);
    }

  protected:
    HWND make(HWND parent) override {
        return makeWindow(WC_EDITW, parent, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    }
    ui::Measure ask() override {
        const HFONT font = wantedFont();
        const int height = look().lineHeight(font) + look().px(8);
        if (isFlat()) {
            const int width = look().textSize(font, wide(model_.text())).cx + look().px(kFlatMargin);
            return {{width, height}, {width, height}, true, true, false, false};
        }
        return {{look().px(kLeastWidth), height}, {look().px(kUsualWidth), height}, true, true, false, true};
    }

    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption:
                showText();
                break;
            case ui::Change::Selection: {
                const std::wstring text = windowText(window());
                const auto start = positionOfCharacter(text, model_.selectionStart());
                const auto end =
                    positionOfCharacter(text, model_.selectionStart() + model_.selectionLength());
                SendMessageW(window(), EM_SETSEL, start, static_cast<LPARAM>(end));
                break;
            }
            case ui::Change::Enabled:
                SendMessageW(window(), EM_SETREADONLY, model_.locked(), 0);
                Peer::show(change);
                showFrame();
                break;
            case ui::Change::Appearance:
                Peer::show(change);
                showFrame();
                break;
            default:
                Peer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_SETFOCUS:
                return defaultAnswerAnd([this] { selectWhenTabbed(); }, message, wParam, lParam);
            case WM_GETDLGCODE:
                return defaultAnswer(message, wParam, lParam) & ~DLGC_WANTTAB;
            case WM_NCCALCSIZE:
                return defaultAnswerAnd([&] { centreText(*reinterpret_cast<RECT*>(lParam)); }, message,
                                        wParam, lParam);
            case WM_NCPAINT:
                return defaultAnswerAnd([this] { paintPadding(); }, message, wParam, lParam);
            case WM_NCHITTEST:
                return hitInside(defaultAnswer(message, wParam, lParam));
            case WM_ENABLE:
                RedrawWindow(window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
                break;
            case WM_PASTE:
                if (pasteFiltered()) return 0;
                break;
            case WM_CHAR:
                if (selectAllBy(static_cast<wchar_t>(wParam))) return 0;
                break;
            default:
                break;
        }
        return Peer::message(message, wParam, lParam);
    }

  private:
    template <class Body>
    LRESULT defaultAnswerAnd(Body&& body, UINT message, WPARAM wParam, LPARAM lParam) {
        const LRESULT result = defaultAnswer(message, wParam, lParam);
        body();
        return result;
    }

    // Reached by key, the whole text is selected, to be typed over.
    void selectWhenTabbed() {
        if (window() && GetKeyState(VK_TAB) < 0) SendMessageW(window(), EM_SETSEL, 0, -1);
    }

    // The system writes at the top of a box; it is to stand in the middle.
    void centreText(RECT& inside) {
        padding_ = isFlat() ? 0 : std::max((heightOf(inside) - look().lineHeight(wantedFont())) / 2, 0);
        InflateRect(&inside, 0, -padding_);
    }

    static LRESULT hitInside(LRESULT hit) { return hit == HTNOWHERE || hit == HTBORDER ? HTCLIENT : hit; }

    // The system would take the first line alone.
    bool pasteFiltered() {
        if (!attached() || !model_.pasteFilter || model_.locked()) return false;
        const std::wstring text = wide(model_.pasteFilter(utf8(clipboardText(window()))));
        if (!text.empty())
            SendMessageW(window(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
        return true;
    }

    bool selectAllBy(wchar_t character) const {
        constexpr wchar_t kControlA = 1;
        if (character == kControlA) SendMessageW(window(), EM_SETSEL, 0, -1);
        return character == kControlA;
    }

    bool isFlat() const {
        return attached() && model_.locked() && model_.backColor() == ui::kButtonFaceColor;
    }

    void paintPadding() {
        if (padding_ <= 0) return;
        RECT whole{};
        RECT client{};
        GetWindowRect(window(), &whole);
        GetClientRect(window(), &client);
        MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&client), 2);
        OffsetRect(&client, -whole.left, -whole.top);
        const HDC dc = GetWindowDC(window());
        const HBRUSH ground = colors(dc);
        const RECT above{client.left, client.top - padding_, client.right, client.top};
        const RECT below{client.left, client.bottom, client.right, client.bottom + padding_};
        FillRect(dc, &above, ground);
        FillRect(dc, &below, ground);
        ReleaseDC(window(), dc);
    }

    void showText() {
        const std::wstring text = wide(model_.text());
        if (windowText(window()) == text) return;
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const bool atEnd = end == static_cast<DWORD>(GetWindowTextLengthW(window()));
        showing_ = true;
        SetWindowTextW(window(), text.c_str());
        showing_ = false;
        const auto cursor = atEnd ? static_cast<DWORD>(text.size()) : end;
        if (hasFocus()) SendMessageW(window(), EM_SETSEL, cursor, static_cast<LPARAM>(cursor));
        sizeChanged();
    }

    void showFrame() {
        const auto now = GetWindowLongPtrW(window(), GWL_EXSTYLE);
        const auto wanted =
            isFlat() ? now & ~static_cast<LONG_PTR>(WS_EX_CLIENTEDGE) : now | WS_EX_CLIENTEDGE;
        if (now != wanted) {
            SetWindowLongPtrW(window(), GWL_EXSTYLE, wanted);
            SetWindowPos(window(), nullptr, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
            SendMessageW(window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
                         isFlat() ? 0 : MAKELPARAM(2, 2));
            sizeChanged();
        }
        RedrawWindow(window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
    }

    int padding_ = 0;
    bool showing_ = false;
};

}  // namespace

std::shared_ptr<Peer> make(ui::TextBox& model, Page& page) {
    return std::make_shared<TextBoxPeer>(model, page);
}

}  // namespace dravik::win32
