#include "windows/control/support/Hosts.h"

#include <prsht.h>

#include <stdexcept>

#include "ui/Widget.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace win32;

namespace {

// At 96 dpi.
constexpr int kWidth = 720;
constexpr int kHeight = 900;
constexpr wchar_t kFrameClass[] = L"DravikTestFrame";

int scaled(int pixels) {
    return MulDiv(pixels, static_cast<int>(GetDpiForSystem()), USER_DEFAULT_SCREEN_DPI);
}

// A box for other work below the control, before or behind it in the order of the Tab key.
void makeBox(HWND frame, int left) {
    CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, scaled(left),
                    scaled(kHeight + 5), scaled(100), scaled(24), frame, nullptr, GetModuleHandleW(nullptr),
                    nullptr);
}

HWND makeFrame() {
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kFrameClass;
    RegisterClassW(&description);  // refused when it is there
    RECT outer{0, 0, scaled(kWidth), scaled(kHeight + 40)};
    AdjustWindowRect(&outer, WS_OVERLAPPEDWINDOW, FALSE);
    HWND frame =
        CreateWindowExW(WS_EX_CONTROLPARENT, kFrameClass, L"Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
                        0, outer.right - outer.left, outer.bottom - outer.top, nullptr, nullptr,
                        GetModuleHandleW(nullptr), nullptr);
    ShowWindow(frame, SW_SHOW);
    return frame;
}

// A function of the system's library with the host window.
template <class Function>
Function* atl(const char* name) {
    static const HMODULE library = LoadLibraryW(L"atl100.dll");
    auto* found = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    if (!found) throw std::runtime_error("atl100.dll cannot be used");
    return found;
}

// Whose control stands in the system's host window.
class AtlWindowHost : public Host {
  public:
    ~AtlWindowHost() override { AtlWindowHost::close(); }
    void resize(int width, int height) override { MoveWindow(host_, 0, 0, width, height, TRUE); }
    void close() override {
        control_ = nullptr;
        if (frame_) DestroyWindow(std::exchange(frame_, nullptr));
    }

  protected:
    AtlWindowHost() { atl<BOOL WINAPI()>("AtlAxWinInit")(); }
    void takeHost(HWND host) {
        host_ = host;
        atl<HRESULT WINAPI(HWND, IUnknown**)>("AtlAxGetControl")(host, control_.put());
    }

  private:
    HWND host_ = nullptr;
};

class AtlHost : public AtlWindowHost {
  public:
    AtlHost() {
        frame_ = makeFrame();
        makeBox(frame_, 0);
        takeHost(CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin100", L"DravikDlgLib.DravikDlg",
                                 WS_CHILD | WS_VISIBLE, 0, 0, scaled(kWidth), scaled(kHeight), frame_,
                                 nullptr, nullptr, nullptr));
        makeBox(frame_, 200);
    }
    bool translate(MSG& message) override { return frame_ && IsDialogMessageW(frame_, &message); }
};

// A lambda would not have the calling convention of 32-bit Windows.
INT_PTR CALLBACK answerNothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

class PropertySheetHost : public AtlWindowHost {
  public:
    PropertySheetHost() {
        PROPSHEETPAGEW page{};
        page.dwSize = sizeof page;
        page.hInstance = GetModuleHandleW(nullptr);
        page.pszTemplate = L"ControlPage";
        page.pfnDlgProc = answerNothing;
        PROPSHEETHEADERW sheet{};
        sheet.dwSize = sizeof sheet;
        sheet.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS | PSH_NOCONTEXTHELP;
        sheet.hInstance = GetModuleHandleW(nullptr);
        sheet.pszCaption = L"Step";
        sheet.nPages = 1;
        sheet.ppsp = &page;
        frame_ = reinterpret_cast<HWND>(PropertySheetW(&sheet));
        const auto hosts = children(frame_, L"AtlAxWin100");
        if (hosts.empty()) throw std::runtime_error("no host window on a property sheet's page");
        takeHost(hosts.front());
    }
    bool translate(MSG& message) override {
        return frame_ &&
               SendMessageW(frame_, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != 0;
    }
};

}  // namespace

std::vector<HWND> children(HWND parent, const std::wstring& className) {
    std::vector<HWND> found;
    for (HWND window = GetWindow(parent, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT)) {
        // The control's own windows of the system's kinds have classes of the control's.
        std::wstring kind = classOf(window);
        if (kind.starts_with(L"Dravik") && !className.starts_with(L"Dravik")) kind.erase(0, 6);
        if (CompareStringOrdinal(kind.c_str(), -1, className.c_str(), -1, TRUE) == CSTR_EQUAL)
            found.push_back(window);
        const auto inside = children(window, className);
        found.insert(found.end(), inside.begin(), inside.end());
    }
    return found;
}

HWND shownForm(const std::wstring& part) {
    for (const HWND window : shownWindows())
        if (windowText(window).find(part) != std::wstring::npos) return window;
    return nullptr;
}

HWND child(HWND parent, const std::wstring& className, const std::wstring& text) {
    for (HWND window : children(parent, className))
        if (windowText(window) == text) return window;
    return nullptr;
}

HWND Host::window() const {
    HWND window = nullptr;
    if (const auto inPlace = control_.as<IOleInPlaceObject>()) inPlace->GetWindow(&window);
    return window;
}

bool Host::pumpUntil(const std::function<bool()>& condition) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - start > 10'000) return false;
        if (!dispatchOne()) MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return true;
}

bool Host::dispatchOne() {
    MSG message{};
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (translate(message)) return true;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

void Host::pump() {
    while (dispatchOne()) continue;
}

void Host::key(UINT virtualKey, int shift) {
    const bool alt = (shift & ui::kAltMask) != 0;
    const HeldKeys held{shift & ui::kShiftMask ? VK_SHIFT : 0, shift & ui::kCtrlMask ? VK_CONTROL : 0,
                        alt ? VK_MENU : 0};
    const LPARAM context = alt ? 1 << 29 : 0;
    PostMessageW(GetFocus(), alt ? WM_SYSKEYDOWN : WM_KEYDOWN, virtualKey, context);
    pump();
    // Posted key strokes are translated with the state of the keys that are really held down.
    if (alt) PostMessageW(GetFocus(), WM_SYSCHAR, virtualKey | 0x20, context);
    pump();
}

StrictHost::StrictHost(ComPtr<IUnknown> control, bool show) {
    control_ = std::move(control);
    frame_ = makeFrame();
    site_ = StrictSite::make(frame_, {0, 0, scaled(kWidth), scaled(kHeight)});
    const auto object = control_.as<IOleObject>();
    object->SetClientSite(site_.get());
    control_.as<IPersistStreamInit>()->InitNew();
    if (show) verb(OLEIVERB_SHOW);
}

StrictHost::~StrictHost() {
    close();
}

void StrictHost::resize(int width, int height) {
    site_->place = {0, 0, width, height};
    if (const auto inPlace = control_.as<IOleInPlaceObject>())
        inPlace->SetObjectRects(&site_->place, &site_->place);
}

void StrictHost::close() {
    if (control_) {
        const auto object = control_.as<IOleObject>();
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    control_ = nullptr;
    if (frame_) DestroyWindow(std::exchange(frame_, nullptr));
}

// A key goes to the control's active object, and then to the control if it may be an access key.
bool StrictHost::translate(MSG& message) {
    if (!control_ || message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const ComPtr<IOleInPlaceActiveObject> active = site_->active;
    if (active && active->TranslateAccelerator(&message) == S_OK) return true;
    const CONTROLINFO info = controlInfo();
    WORD command = 0;
    if (message.message != WM_SYSCHAR || info.cAccel == 0 ||
        !IsAccelerator(info.hAccel, info.cAccel, &message, &command))
        return false;
    as<IOleControl>()->OnMnemonic(&message);
    return true;
}

std::unique_ptr<Host> makeSystemHost(const std::string& name) {
    if (name == "sheet") return std::make_unique<PropertySheetHost>();
    return std::make_unique<AtlHost>();
}

}  // namespace dravik::test
