#include "windows/win32/Win32Platform.h"

#include <algorithm>

#include "base/Failure.h"
#include "base/Handle.h"
#include "windows/win32/FormWindow.h"
#include "windows/win32/Guard.h"
#include "windows/win32/Module.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Skin.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kClipboardTries = 20;
constexpr DWORD kClipboardPause = 10;  // milliseconds

// The clipboard belongs to a window; this one lives as long as it is open.
class Clipboard {
  public:
    Clipboard()
        : window_(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  moduleInstance(), nullptr)) {
        for (int i = 0; i < kClipboardTries && !open_; ++i) {
            if (i > 0) Sleep(kClipboardPause);
            open_ = OpenClipboard(window_) != FALSE;
        }
        if (open_) return;
        const DWORD error = GetLastError();
        DestroyWindow(window_);
        throw Failure(RuntimeError::PermissionDenied, "The clipboard is in use: " + lastErrorText(error));
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    ~Clipboard() {
        CloseClipboard();
        DestroyWindow(window_);
    }

  private:
    HWND window_;
    bool open_ = false;
};

struct MenuHandle {
    using Value = HMENU;
    static HMENU none() noexcept { return nullptr; }
    static void close(HMENU menu) noexcept { DestroyMenu(menu); }
};

UINT boxFlags(const ui::MessageBox& box) {
    UINT flags = MB_OK;
    if (box.buttons == ui::MessageBox::Buttons::YesNo) flags = MB_YESNO;
    if (box.buttons == ui::MessageBox::Buttons::YesNoCancel) flags = MB_YESNOCANCEL;
    if (box.icon == ui::MessageBox::Icon::Critical) flags |= MB_ICONERROR;
    if (box.icon == ui::MessageBox::Icon::Information) flags |= MB_ICONINFORMATION;
    return flags;
}

std::string dateForm(const SYSTEMTIME& time) {
    wchar_t text[128];
    const int length = GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text,
                                       static_cast<int>(std::size(text)), nullptr);
    return length > 1 ? utf8({text, static_cast<std::size_t>(length - 1)}) : std::string();
}

std::string timeForm(const SYSTEMTIME& time) {
    wchar_t text[128];
    const int length =
        GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, text, static_cast<int>(std::size(text)));
    return length > 1 ? utf8({text, static_cast<std::size_t>(length - 1)}) : std::string();
}

SYSTEMTIME now() {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    return time;
}

}  // namespace

struct Win32Platform::State {
    bool alive = true;
    int modalDepth = 0;
    std::vector<std::shared_ptr<FormWindow>> dialogs;
};

// Something modal is up: tells the surroundings, and gives the focus back afterwards.
class ModalScope {
  public:
    explicit ModalScope(Win32Platform& platform) : platform_(platform), state_(platform.state_) {
        if (state_->modalDepth++ == 0 && platform_.modal) platform_.modal(true);
    }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    ~ModalScope() {
        release();
        if (--state_->modalDepth == 0 && state_->alive && platform_.modal) platform_.modal(false);
        if (state_->alive) platform_.giveFocusBack();
    }

    // The screen's child forms cannot be used either, but for the one that the box comes up over, which the
    // box keeps from being used itself.
    void disableForms(HWND except) {
        for (const auto& [form, window] : platform_.windows_)
            if (window->window() != except) disable(window->window());
    }
    void disable(HWND window) {
        if (!window || !IsWindowEnabled(window)) return;
        EnableWindow(window, FALSE);
        disabled_.push_back(window);
    }
    // The windows can be used again; before the dialog goes, so that the focus falls to its owner.
    void release() noexcept {
        for (const HWND window : disabled_)
            if (IsWindow(window)) EnableWindow(window, TRUE);
        disabled_.clear();
    }

  private:
    Win32Platform& platform_;
    std::shared_ptr<Win32Platform::State> state_;
    std::vector<HWND> disabled_;
};

Win32Platform::Win32Platform() : state_(std::make_shared<State>()) {}

Win32Platform::~Win32Platform() {
    state_->alive = false;
    const auto windows = std::exchange(windows_, {});
    for (const auto& [form, window] : windows) window->finished = nullptr;
    for (const auto& dialog : std::vector(state_->dialogs)) {
        dialog->close();
        if (dialog->window()) PostMessageW(dialog->window(), WM_NULL, 0, 0);  // wakes its loop
    }
    if (busy_ > 0) SetCursor(cursorBefore_);
}

HWND Win32Platform::currentOwner() const {
    for (auto dialog = state_->dialogs.rbegin(); dialog != state_->dialogs.rend(); ++dialog)
        if ((*dialog)->window() && IsWindowVisible((*dialog)->window())) return (*dialog)->window();
    const HWND active = GetActiveWindow();
    for (const auto& [form, window] : windows_)
        if (active && window->window() == active && IsWindowVisible(active)) return active;
    const HWND outer = owner ? owner() : nullptr;
    return outer && IsWindow(outer) ? GetAncestor(outer, GA_ROOT) : nullptr;
}

ui::Answer Win32Platform::messageBox(const ui::MessageBox& box) {
    const HWND over = currentOwner();
    int answer = 0;
    {
        ModalScope scope(*this);
        scope.disableForms(over);
        const Styles styles;
        answer = ::MessageBoxW(over, withLineBreaks(wide(box.text)).c_str(), wide(box.title).c_str(),
                               boxFlags(box) | (over ? 0u : static_cast<UINT>(MB_TASKMODAL)));
    }
    switch (answer) {
        case IDYES:
            return ui::Answer::Yes;
        case IDNO:
            return ui::Answer::No;
        case IDOK:
            return ui::Answer::Ok;
        default:
            break;
    }
    // Closed without a button, or not shown at all.
    switch (box.buttons) {
        case ui::MessageBox::Buttons::YesNo:
            return ui::Answer::No;
        case ui::MessageBox::Buttons::YesNoCancel:
            return ui::Answer::Cancel;
        default:
            return ui::Answer::Ok;
    }
}

void Win32Platform::showModal(ui::Form& form) {
    form.load();
    if (!form.loaded()) return;
    const HWND over = currentOwner();
    const auto window = FormWindow::make(form, over, *this);
    const auto state = state_;
    ModalScope scope(*this);
    scope.disable(over);
    scope.disableForms(over);
    state->dialogs.push_back(window);
    bool done = false;
    window->finished = [&] {
        done = true;
        scope.release();
    };
    window->bringUp();
    guarded([&] { form.activate(); });
    bool quit = false;
    MSG message{};
    while (!done && state->alive && window->window()) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) {
            quit = got == 0;
            break;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (!done && window->window()) window->close();
    window->finished = nullptr;
    std::erase(state->dialogs, window);
    scope.release();
    if (quit) PostQuitMessage(static_cast<int>(message.wParam));
}

void Win32Platform::show(ui::Form& form) {
    auto known = windows_.find(&form);
    if (known == windows_.end()) {
        form.load();
        if (!form.loaded()) return;
        const HWND outer = owner ? owner() : nullptr;
        const auto window = FormWindow::make(form, outer ? GetAncestor(outer, GA_ROOT) : nullptr, *this);
        window->finished = [this, key = &form] { windows_.erase(key); };
        windows_[&form] = window;
        known = windows_.find(&form);
    }
    const auto window = known->second;
    window->bringUp();
    form.activate();
}

FormWindow* Win32Platform::windowOf(const ui::Form& form) const {
    const auto found = windows_.find(&form);
    return found == windows_.end() ? nullptr : found->second.get();
}

void Win32Platform::enableWindows(bool enabled) {
    for (const auto& [form, window] : windows_)
        if (window->window()) EnableWindow(window->window(), enabled);
}

void Win32Platform::setAmbient(const Ambient& ambient) {
    ambient_ = ambient;
    for (const auto& [form, window] : windows_) window->takeAmbient();
    for (const auto& dialog : state_->dialogs) dialog->takeAmbient();
}

void Win32Platform::systemChanged() {
    for (const auto& [form, window] : windows_) window->page().systemChanged();
}

void Win32Platform::popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) {
    const Peer* peer = peerOf(at);
    if (peer && peer->window()) popUpMenu(menu, peer->window(), peer->toView(x, y));
}

void Win32Platform::popUpMenu(ui::PopupMenu& menu, HWND over, POINT place) {
    const Handle<MenuHandle> shown(CreatePopupMenu());
    for (std::size_t i = 0; i < menu.items().size(); ++i) {
        const ui::MenuItem& item = *menu.items()[i];
        if (item.isSeparator())
            AppendMenuW(shown.get(), MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(shown.get(), MF_STRING | (item.enabled ? 0u : static_cast<UINT>(MF_GRAYED)), i + 1,
                        wide(item.caption).c_str());
    }
    ClientToScreen(over, &place);
    const HWND owning = GetAncestor(over, GA_ROOT);
    if (ambient_.skin) ambient_.skin->dressMenu(shown.get(), owning);
    std::size_t picked = 0;
    {
        const ModalScope scope(*this);
        const UINT align = GetSystemMetrics(SM_MENUDROPALIGNMENT) ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
        picked = static_cast<std::size_t>(
            TrackPopupMenuEx(shown.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON | align, place.x,
                             place.y, owning, nullptr));
    }
    if (picked > 0 && picked <= menu.items().size()) menu.items()[picked - 1]->click();
}

void Win32Platform::setClipboardText(const std::string& text) {
    const std::wstring content = wide(text);
    const std::size_t bytes = (content.size() + 1) * sizeof(wchar_t);
    const Clipboard clipboard;
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    void* target = memory ? GlobalLock(memory) : nullptr;
    if (!target) throw Failure(RuntimeError::OutOfMemory);
    std::copy_n(reinterpret_cast<const char*>(content.c_str()), bytes, static_cast<char*>(target));
    GlobalUnlock(memory);
    EmptyClipboard();
    if (!SetClipboardData(CF_UNICODETEXT, memory)) {
        GlobalFree(memory);
        throw Failure(RuntimeError::PermissionDenied,
                      "The clipboard takes no text: " + lastErrorText(GetLastError()));
    }
}

std::string Win32Platform::fileDateText(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wide(path).c_str(), GetFileExInfoStandard, &data))
        throw Failure(RuntimeError::FileNotFound);
    SYSTEMTIME utc{};
    SYSTEMTIME local{};
    FileTimeToSystemTime(&data.ftLastWriteTime, &utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    return dateForm(local) + ' ' + timeForm(local);
}

std::string Win32Platform::dateText() {
    return dateForm(now());
}

std::string Win32Platform::timeText() {
    return timeForm(now());
}

void Win32Platform::setBusy(bool busy) {
    if (busy && busy_++ == 0) cursorBefore_ = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    if (!busy && busy_ > 0 && --busy_ == 0) SetCursor(cursorBefore_);
}

void Win32Platform::focusArrived(HWND page) {
    focusedPages_[GetAncestor(page, GA_ROOT)] = page;
}

void Win32Platform::focusLeft(HWND page) noexcept {
    std::erase_if(focusedPages_, [page](const auto& known) { return known.second == page; });
}

void Win32Platform::giveFocusBack() {
    const HWND root = GetActiveWindow();
    const HWND focus = GetFocus();
    const auto found = focusedPages_.find(root);
    if (found != focusedPages_.end() && IsWindowVisible(found->second) && (!focus || focus == root))
        SetFocus(found->second);
}

Peer* Win32Platform::peerOf(const ui::Widget& widget) const {
    const auto found = peers_.find(&widget);
    return found == peers_.end() ? nullptr : found->second;
}

void Win32Platform::addPeer(const ui::Widget& widget, Peer& peer) {
    peers_[&widget] = &peer;
}

void Win32Platform::removePeer(const ui::Widget& widget, const Peer& peer) noexcept {
    if (const auto found = peers_.find(&widget); found != peers_.end() && found->second == &peer)
        peers_.erase(found);
}

}  // namespace dravik::win32
