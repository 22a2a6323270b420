#include "windows/app/MainWindow.h"

#include <shellapi.h>

#include <algorithm>

#include "windows/app/ClipboardImages.h"
#include "windows/app/DarkSkin.h"
#include "windows/app/OpenDialogs.h"
#include "windows/com/Module.h"
#include "windows/win32/Guard.h"
#include "windows/win32/HighContrast.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr int kDividerWidth = 6;
constexpr int kLeastHeight = 560;
constexpr int kIcon = 1;
constexpr wchar_t kPlacement[] = L"Placement";
constexpr wchar_t kDivider[] = L"Divider";

// Page Up and Page Down go from part to part, but where the focused control leafs through something of its
// own.
bool leafsItself(HWND focus) {
    wchar_t name[32] = {};
    GetClassNameW(focus, name, static_cast<int>(std::size(name)));
    const std::wstring className = name;
    return className == L"DravikGrid" || className == L"DravikPictureGrid" ||
           className == L"DravikComboBox" || className == L"DravikListBox" || className == L"ComboLBox";
}

}  // namespace

MainWindow::MainWindow(Settings settings) : DrawnWindow(shared_), settings_(std::move(settings)) {
    create(L"DravikTrainer", "mainWindow", nullptr, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
           WS_EX_CONTROLPARENT);
    shared_.now = std::make_unique<win32::Look>(win32::dpiOf(window()), ambient());
    const auto icon = [](int size) {
        return reinterpret_cast<LPARAM>(LoadImageW(win32::moduleInstance(), MAKEINTRESOURCEW(kIcon),
                                                   IMAGE_ICON, GetSystemMetrics(size), GetSystemMetrics(size),
                                                   LR_SHARED));
    };
    SendMessageW(window(), WM_SETICON, ICON_BIG, icon(SM_CXICON));
    SendMessageW(window(), WM_SETICON, ICON_SMALL, icon(SM_CXSMICON));
    DragAcceptFiles(window(), TRUE);
}

MainWindow::~MainWindow() {
    clear();
}

void MainWindow::fill(trainer::Trainer& trainer, win32::Win32Platform& platform) {
    trainer::WindowSystem& system = *this;
    platform_ = &platform;
    model_ = std::make_unique<trainer::TrainerWindow>(trainer, platform, system);
    host_ = std::make_unique<PageHost>(window(), shared_);
    page_ = std::make_unique<win32::FormPage>(trainer.control().form(), host_->window(), platform, ambient());
    host_->show(page_.get());
    win32::guarded([&] { trainer.control().form().activate(); });
    menus_ = std::make_unique<WindowMenus>(model_->actions, window());
    menus_->setSkin(ambient().skin);
    pane_ = std::make_unique<PartPane>(window(), shared_, *model_, platform);
    galleryShown_ = model_->gallery.shownChanged.connect([this] { showGallery(); });
    const auto showTitle = [this] { SetWindowTextW(window(), win32::wide(model_->title()).c_str()); };
    titleChanged_ = trainer.titleChanged.connect(showTitle);
    showTitle();
    restorePlace();
    resized();
}

void MainWindow::clear() {
    titleChanged_.disconnect();
    galleryShown_.disconnect();
    pane_.reset();
    gallery_.reset();
    if (host_) host_->show(nullptr);
    page_.reset();
    host_.reset();
    menus_.reset();
    model_.reset();
}

void MainWindow::show() {
    ShowWindow(window(), IsZoomed(window()) ? SW_SHOWMAXIMIZED : SW_SHOW);
    SetForegroundWindow(window());
    page_->focusFirst();  // where the control below cannot have it yet
    win32::guarded([this] { model_->giveFocus(); });
    UpdateWindow(window());
}

void MainWindow::open(const std::vector<std::string>& paths) {
    win32::guarded([&] { model_->open(paths); });
}

void MainWindow::restorePlace() {
    divided_ = static_cast<int>(settings_.number(kDivider).value_or(static_cast<DWORD>(divided_)));
    const std::vector<BYTE> bytes = settings_.bytes(kPlacement);
    WINDOWPLACEMENT placement{};
    if (bytes.size() == sizeof placement) {
        std::copy(bytes.begin(), bytes.end(), reinterpret_cast<BYTE*>(&placement));
        if (MonitorFromRect(&placement.rcNormalPosition, MONITOR_DEFAULTTONULL)) {
            const bool maximized = placement.showCmd == SW_SHOWMAXIMIZED;
            placement.length = sizeof placement;
            placement.showCmd = SW_HIDE;
            SetWindowPlacement(window(), &placement);
            if (maximized)
                SetWindowLongPtrW(window(), GWL_STYLE, GetWindowLongPtrW(window(), GWL_STYLE) | WS_MAXIMIZE);
            return;
        }
    }
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const int wide = std::min(look().px(trainer::TrainerWindow::kFirstWidth), win32::widthOf(area));
    const int high = std::min(look().px(trainer::TrainerWindow::kFirstHeight), win32::heightOf(area));
    setBounds({(area.left + area.right - wide) / 2, (area.top + area.bottom - high) / 2,
               (area.left + area.right + wide) / 2, (area.top + area.bottom + high) / 2});
}

void MainWindow::rememberPlace() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (GetWindowPlacement(window(), &placement))
        settings_.setBytes(kPlacement, &placement, sizeof placement);
    settings_.setNumber(kDivider, static_cast<DWORD>(divided_));
}

POINT MainWindow::leastTrackSize() const {
    RECT least{0, 0, host_->leastWidth() + pane_->leastWidth() + look().px(kDividerWidth),
               look().px(kLeastHeight)};
    AdjustWindowRectEx(&least, WS_OVERLAPPEDWINDOW, TRUE, 0);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window(), MONITOR_DEFAULTTONEAREST), &monitor);
    return {std::min(win32::widthOf(least), win32::widthOf(monitor.rcWork)),
            std::min(win32::heightOf(least), win32::heightOf(monitor.rcWork))};
}

int MainWindow::leftWidth() const {
    const int least = host_->leastWidth();
    const int most = client().right - pane_->leastWidth() - look().px(kDividerWidth);
    return std::max(std::min(look().px(divided_), most), least);
}

RECT MainWindow::divider() const {
    const int left = leftWidth();
    return {left, 0, left + look().px(kDividerWidth), client().bottom};
}

void MainWindow::arrange() {
    if (!pane_ || !page_) return;
    const RECT between = divider();
    const RECT area = client();
    const int room = static_cast<int>(area.bottom - page_->minimumSize().cy);
    const int below = gallery_ ? std::max(std::min(look().px(trainer::TrainerWindow::kGalleryHeight), room),
                                          static_cast<int>(gallery_->minimumSize().cy))
                               : 0;
    host_->setBounds({0, 0, between.left, area.bottom - below});
    host_->arrange();
    if (gallery_) gallery_->setBounds({0, area.bottom - below, between.left, area.bottom});
    pane_->setBounds({between.right, 0, area.right, area.bottom});
    redraw();
}

void MainWindow::resized() {
    if (!model_) return;
    RECT place{};
    GetWindowRect(window(), &place);
    win32::guarded([&] { model_->arrangeFor(MulDiv(win32::heightOf(place), 96, look().px(96))); });
    arrange();
}

void MainWindow::showGallery() {
    if (model_->gallery.isShown()) {
        gallery_ = std::make_unique<win32::FormPage>(model_->gallery, window(), *platform_, ambient());
        gallery_->setVisible(true);
    } else {
        const bool hadFocus = gallery_ && gallery_->hasFocusInside();
        gallery_.reset();
        if (hadFocus) page_->restoreFocus();
    }
    arrange();
}

void MainWindow::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, look().background());
    if (!pane_ || !page_) return;
    const RECT between = divider();
    const int middle = (between.left + between.right) / 2;
    const COLORREF dot = win32::blend(look().background(), look().color(ui::kWindowTextColor), 0.35);
    for (int i = -2; i <= 2; ++i) {
        const int y = area.bottom / 2 + i * look().px(4);
        win32::fill(dc, {middle, y, middle + look().px(1), y + look().px(1)}, dot);
    }
}

void MainWindow::lookAnew(int dpi) {
    shared_.now = std::make_unique<win32::Look>(dpi, ambient());
    if (!pane_ || !page_) return;
    page_->setDpi(dpi);
    if (gallery_) gallery_->setDpi(dpi);
    pane_->setDpi(dpi);
    arrange();
}

win32::Ambient MainWindow::ambient() const {
    win32::Ambient result;
    const bool isDark =
        theme_ == trainer::Theme::Dark || (theme_ == trainer::Theme::System && desktopIsDark());
    if (isDark && !win32::isHighContrast()) result.skin = &darkSkin();
    return result;
}

void MainWindow::showTheme(trainer::Theme theme) {
    theme_ = theme;
    systemChanged();
}

void MainWindow::systemChanged() {
    const win32::Ambient wanted = ambient();
    win32::setDarkTitle(window(), wanted.skin != nullptr);
    if (platform_) platform_->setAmbient(wanted);
    lookAnew(look().dpi());
    if (!page_ || !pane_) return;
    menus_->setSkin(wanted.skin);
    for (win32::FormPage* page : {page_.get(), gallery_.get()}) {
        if (!page) continue;
        page->setAmbient(wanted);
        page->systemChanged();
    }
    pane_->systemChanged(wanted);
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

std::vector<std::string> MainWindow::choosePaths(const trainer::FileQuestion& question) {
    return app::choosePaths(window(), question);
}

std::string MainWindow::chooseNewFile(const trainer::FileQuestion& question) {
    const HWND over = GetActiveWindow();
    return app::chooseNewFile(over ? over : window(), question);
}

std::vector<std::string> MainWindow::clipboardImages(const std::string& newFile) {
    return app::clipboardImages(window(), newFile);
}

std::string MainWindow::kept(const std::string& key) const {
    return win32::utf8(settings_.text(win32::wide(key).c_str()));
}

void MainWindow::keep(const std::string& key, const std::string& text) {
    settings_.setText(win32::wide(key).c_str(), win32::wide(text));
}

bool MainWindow::showGuide() {
    const std::wstring program = com::modulePath();
    const std::wstring guide = program.substr(0, program.rfind(L'\\') + 1) + L"docs\\operator-guide.html";
    return reinterpret_cast<INT_PTR>(
               ShellExecuteW(window(), L"open", guide.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) > 32;
}

void MainWindow::close() {
    if (!window() || !model_ || model_->hasEnded()) return;
    rememberPlace();
    if (closing_) return;
    closing_ = true;
    const bool ends = !win32::guarded([this] { model_->close(); }) || model_->hasEnded();
    closing_ = false;
    if (!ends) return;
    page_->detach();
    if (gallery_) gallery_->detach();
    host_->show(nullptr);
    DestroyWindow(window());
}

void MainWindow::dropped(HDROP drop) {
    const std::vector<std::string> paths = pathsOf(drop);
    DragFinish(drop);
    SetForegroundWindow(window());
    open(paths);
}

bool MainWindow::translate(MSG& message) {
    if (!window() || !pane_ || (message.hwnd != window() && !IsChild(window(), message.hwnd))) return false;
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (menus_->translate(message)) return true;
    if (message.message == WM_KEYDOWN && (message.wParam == VK_PRIOR || message.wParam == VK_NEXT) &&
        GetKeyState(VK_CONTROL) >= 0 && !leafsItself(message.hwnd)) {
        trainer::WindowActions& actions = model_->actions;
        win32::guarded([&] { (message.wParam == VK_PRIOR ? actions.previous : actions.next).trigger(); });
        return true;
    }
    const bool backwards = GetKeyState(VK_SHIFT) < 0;
    bool left = false;
    if (pane_->translate(message, left)) return true;
    if (left) {
        if (!backwards)
            page_->focusFirst();
        else if (!gallery_ || !gallery_->focusLast())
            page_->focusLast();
        return true;
    }
    if (pane_->hasFocusInside() && message.message != WM_SYSCHAR) return false;
    // Tab goes from the page to the gallery and on to the part.
    if (gallery_ && gallery_->hasFocusInside()) {
        if (gallery_->translateKey(message, left)) return true;
        if (left && backwards)
            page_->focusLast();
        else if (left)
            pane_->focus(false);
        return left;
    }
    if (page_->translateKey(message, left)) return true;
    if (left && (backwards || !gallery_ || !gallery_->focusFirst())) pane_->focus(backwards);
    return left;
}

int MainWindow::run() {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (translate(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

LRESULT MainWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED) resized();
            return 0;
        case WM_GETMINMAXINFO:
            if (page_ && pane_) reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = leastTrackSize();
            return 0;
        case WM_CLOSE:
            close();
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:  // unsaved changes are there again at the next start
            if (wParam && model_) rememberPlace();
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        case WM_COMMAND:
            if (lParam == 0 && menus_) menus_->perform(LOWORD(wParam));
            return 0;
        case WM_INITMENUPOPUP:
            if (menus_) menus_->showStates(reinterpret_cast<HMENU>(wParam));
            return 0;
        case WM_DROPFILES:
            if (pane_) dropped(reinterpret_cast<HDROP>(wParam));
            return 0;
        case WM_SETFOCUS:
            if (page_ && !page_->restoreFocus()) page_->focusFirst();
            return 0;
        case WM_LBUTTONDOWN: {
            const RECT between = page_ ? divider() : RECT{};
            if (PtInRect(&between, place)) {
                dividing_ = true;
                SetCapture(window());
            }
            return 0;
        }
        case WM_MOUSEMOVE:
            if (dividing_) {
                divided_ = std::max<int>(place.x, 0) * win32::kUsualDpi / look().dpi();
                arrange();
                divided_ = leftWidth() * win32::kUsualDpi / look().dpi();
            }
            return 0;
        case WM_LBUTTONUP:
            if (dividing_) ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            dividing_ = false;
            return 0;
        case WM_SETCURSOR: {
            POINT at{};
            GetCursorPos(&at);
            ScreenToClient(window(), &at);
            const RECT between = page_ ? divider() : RECT{};
            if (LOWORD(lParam) != HTCLIENT || !PtInRect(&between, at)) break;
            SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
            return TRUE;
        }
        case WM_DPICHANGED: {
            const RECT& wanted = *reinterpret_cast<const RECT*>(lParam);
            lookAnew(LOWORD(wParam));
            setBounds(wanted);
            return 0;
        }
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_SETTINGCHANGE:
            if (!page_ || !pane_) break;
            systemChanged();
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
