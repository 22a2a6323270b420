#include "windows/win32/Peer.h"

#include "windows/win32/Accessible.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/Module.h"
#include "windows/win32/Page.h"
#include "windows/win32/Skin.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

int shiftOf(WPARAM keys) {
    return (keys & MK_SHIFT ? ui::kShiftMask : 0) | (keys & MK_CONTROL ? ui::kCtrlMask : 0) |
           (GetKeyState(VK_MENU) < 0 ? ui::kAltMask : 0);
}

int buttonsOf(WPARAM keys) {
    return (keys & MK_LBUTTON ? ui::kLeftButton : 0) | (keys & MK_RBUTTON ? ui::kRightButton : 0) |
           (keys & MK_MBUTTON ? ui::kMiddleButton : 0);
}

// Another window in front, or a window that is just coming up, is no change of focus to the operator.
bool movesFocus(HWND window, HWND other) {
    return other && other != window && GetAncestor(other, GA_ROOT) == GetAncestor(window, GA_ROOT);
}

}  // namespace

int shiftState() {
    return (GetKeyState(VK_SHIFT) < 0 ? ui::kShiftMask : 0) |
           (GetKeyState(VK_CONTROL) < 0 ? ui::kCtrlMask : 0) | (GetKeyState(VK_MENU) < 0 ? ui::kAltMask : 0);
}

int pressedButton(UINT message) noexcept {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return ui::kLeftButton;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            return ui::kRightButton;
        case WM_MBUTTONDOWN:
        case WM_MBUTTONDBLCLK:
            return ui::kMiddleButton;
        default:
            return 0;
    }
}

Peer::Peer(ui::Widget& model, Page& page) : model_(model), page_(page), name_(nameMark(model.name())) {
    page.platform().addPeer(model, *this);
}

Peer::~Peer() {
    if (attached_) page_.platform().removePeer(model_, *this);
}

Look& Peer::look() const noexcept {
    return page_.look();
}

void Peer::start(HWND parent, Peer* container) {
    container_ = container;
    HWND made = nullptr;
    {
        const Styles styles;
        made = make(parent);
    }
    if (!made) throw Failure(RuntimeError::OutOfMemory, "no window: " + lastErrorText(GetLastError()));
    opened(made);
    for (const ui::Change change :
         {ui::Change::Caption, ui::Change::Items, ui::Change::Value, ui::Change::Selection,
          ui::Change::Appearance, ui::Change::Enabled, ui::Change::ToolTip, ui::Change::Name})
        show(change);
    started_ = true;
    changed_ = model_.changed.connect([this](ui::Change change) {
        const auto self = shared_from_this();
        const auto page = page_.shared_from_this();
        if (window()) guarded([&] { show(change); });
        page->changed();
    });
    started();
}

void Peer::opened(HWND made) {
    takeOver(made);
    page_.addWindow(made, *this);
    SetPropW(made, name_.c_str(), made);
    SendMessageW(made, WM_SETFONT, reinterpret_cast<WPARAM>(wantedFont()), FALSE);
}

void Peer::detach() noexcept {
    if (!attached_) return;
    changed_.disconnect();
    page_.platform().removePeer(model_, *this);
    attached_ = false;
}

HWND Peer::makeWindow(const wchar_t* className, HWND parent, DWORD style, DWORD extendedStyle,
                      const std::wstring& text) {
    accessibleClass_ = accessibleClass(className);
    return CreateWindowExW(extendedStyle, nativeClass(className).c_str(), text.c_str(),
                           style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(page_.nextId())), moduleInstance(),
                           nullptr);
}

const ui::Measure& Peer::measure() {
    if (!measured_) {
        measured_ = attached_ ? ask() : ui::Measure{};
        measured_->visible = attached_ && model_.visible();
    }
    return *measured_;
}

void Peer::sizeChanged() {
    if (!measured_) return;  // nobody has asked yet
    const ui::Measure before = *measured_;
    measured_.reset();
    if (measure() == before) return;
    for (Peer* outer = container_; outer; outer = outer->container_) outer->forgetMeasure();
    page_.arrangeSoon();
}

RECT Peer::windowPlace(const ui::Box& box) const {
    return {box.left, box.top, box.left + box.width, box.top + box.height};
}

bool Peer::stands(const RECT& place) const {
    RECT now{};
    GetWindowRect(window(), &now);
    MapWindowPoints(nullptr, GetParent(window()), reinterpret_cast<POINT*>(&now), 2);
    return EqualRect(&now, &place);
}

void Peer::placed(const ui::Box&) {}

bool Peer::isUsable() const {
    if (!attached_ || !window() || !model_.enabled() || !model_.visible()) return false;
    return !container_ || container_->isUsable();
}

void Peer::focus() {
    if (window()) SetFocus(window());
}

HFONT Peer::wantedFont() const {
    return look().font(attached_ && model_.bold());
}

void Peer::lookChanged() {
    measured_.reset();
    if (!window()) return;
    SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(wantedFont()), FALSE);
    InvalidateRect(window(), nullptr, TRUE);
}

void Peer::showEnabled() {
    bool enabled = attached_ && model_.enabled();
    for (const Peer* outer = container_; outer; outer = outer->container_)
        enabled = enabled && outer->model_.enabled();
    if ((IsWindowEnabled(window()) != FALSE) == enabled) return;
    const bool focused = GetFocus() == window();
    EnableWindow(window(), enabled);
    if (focused && !enabled) page_.focusLeavesSoon(*this);
}

void Peer::show(ui::Change change) {
    switch (change) {
        case ui::Change::Enabled:
            showEnabled();
            break;
        case ui::Change::Visible: {
            const bool visible = model_.visible();
            if (!visible && window() && (GetFocus() == window() || IsChild(window(), GetFocus())))
                page_.focusLeft(*this);
            if (visible != ((GetWindowLongPtrW(window(), GWL_STYLE) & WS_VISIBLE) != 0))
                ShowWindow(window(), visible ? SW_SHOWNA : SW_HIDE);
            sizeChanged();
            break;
        }
        case ui::Change::ToolTip:
            page_.toolTips().set(window(), wide(model_.toolTip()));
            break;
        case ui::Change::Name:
            showName();
            break;
        case ui::Change::Focus:
            giveFocus();
            break;
        case ui::Change::Appearance:
            if (const auto font = wantedFont();
                font != reinterpret_cast<HFONT>(SendMessageW(window(), WM_GETFONT, 0, 0)))
                SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
            redraw();
            sizeChanged();
            break;
        default:
            break;
    }
}

void Peer::redraw() const {
    if (IsWindowVisible(window())) InvalidateRect(window(), nullptr, TRUE);
}

void Peer::showText(const std::wstring& text) {
    if (windowText(window()) != text) SetWindowTextW(window(), text.c_str());
}

void Peer::showName() {
    if (accessibleContent()) {
        if (started_) NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
    } else if (!model_.accessibleName().empty()) {
        annotateName(window(), wide(model_.accessibleName()));
    }
}

bool Peer::isTypedAhead(UINT key) {
    const bool isTyping = key == VK_RETURN || MapVirtualKeyW(key, MAPVK_VK_TO_CHAR) >= L' ';
    return isTyping && typedAhead_.drops();
}

void Peer::giveFocus() {
    const Peer* before = page_.peerOf(GetFocus());
    if (model_.kind() == ui::WidgetKind::Button && before && before->attached_ &&
        before->model_.kind() == ui::WidgetKind::TextBox)
        typedAhead_.begin();
    if (isUsable() && IsWindowVisible(window()))
        focus();
    else  // the procedure that asks for the focus may enable or show the control only later
        page_.focusLater(*this);
}

POINT Peer::toView(double x, double y) const {
    return {static_cast<LONG>(x * look().dpi() / 1440), static_cast<LONG>(y * look().dpi() / 1440)};
}

ModelPlace Peer::fromView(POINT place) const {
    return {twips(place.x, look().dpi()), twips(place.y, look().dpi())};
}

void Peer::fireMouseDown(int button, int shift, POINT place) {
    act([&] {
        const ModelPlace at = fromView(place);
        model_.mouseDown({button, shift, at.x, at.y});
    });
}

void Peer::fireMouseMove(int buttons, int shift, POINT place) {
    act([&] {
        const ModelPlace at = fromView(place);
        model_.mouseMove({buttons, shift, at.x, at.y});
    });
}

bool Peer::fireKey(UINT key) {
    // The menu key comes to the models as the right mouse button.
    if (key != VK_APPS) act([&] { model_.keyDown(static_cast<int>(key), shiftState()); });
    return window() != nullptr;
}

void Peer::focusCame(bool moved) {
    focused_ = true;
    page_.focusArrived(*this);
    if (moved) act([&] { model_.gotFocus(); });
}

void Peer::focusWent(bool moved) {
    focused_ = false;
    page_.toolTips().hide();
    if (moved) act([&] { model_.lostFocus(); });
}

LRESULT Peer::message(UINT message, WPARAM wParam, LPARAM lParam) {
    return defaultAnswer(message, wParam, lParam);
}

void Peer::windowGoes() {
    RemovePropW(window(), name_.c_str());
    page_.removeWindow(window());
    page_.toolTips().remove(window());
}

void Peer::moveMouse(WPARAM keys, POINT place) {
    if (place.x == lastMove_.x && place.y == lastMove_.y) return;
    lastMove_ = place;
    fireMouseMove(buttonsOf(keys), shiftOf(keys), place);
}

bool Peer::answerKey(UINT key) {
    return !fireKey(key) || (attached_ && !wantsKey(key) && page_.answerKey(*this, key));
}

// Of keys that have been answered; an edit control would beep.
bool Peer::answerCharacter(wchar_t character) const {
    const bool isAnswered =
        character == L'\t' || character == L'\r' || character == L'\n' || character == VK_ESCAPE;
    return isAnswered && (!attached_ || !wantsKey(character));
}

bool Peer::answerAccessKey(wchar_t key) const {
    return attached_ && !page_.inert() && page_.pressMnemonic(key);
}

// A dialog around the page, such as a property sheet, must not take Enter for its own button.
LRESULT Peer::dialogCodes(WPARAM wParam, LPARAM lParam) {
    const LRESULT codes = message(WM_GETDLGCODE, wParam, lParam);
    const auto* event = reinterpret_cast<const MSG*>(lParam);
    const bool ours = event && attached_ && event->message == WM_KEYDOWN &&
                      page_.wouldAnswer(*this, static_cast<UINT>(event->wParam));
    return ours ? codes | DLGC_WANTMESSAGE : codes;
}

bool Peer::showBusyPointer(int hit) const {
    if (!attached_ || !page_.platform().busy() || hit != HTCLIENT) return false;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return true;
}

std::optional<LRESULT> Peer::accessibleObject(WPARAM wParam, LPARAM lParam) {
    const auto object = static_cast<LONG>(lParam);
    if (object == OBJID_QUERYCLASSNAMEIDX && accessibleClass_ != 0) return accessibleClass_;
    AccessibleContent* content = object == OBJID_CLIENT && attached_ ? accessibleContent() : nullptr;
    if (!content) return std::nullopt;
    return accessibleAnswer(window(), *content, weak_from_this(), wParam);
}

LRESULT Peer::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto page = page_.weak_from_this().lock();
    if (!page) return defaultAnswer(message, wParam, lParam);
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    page_.toolTips().relay(window(), message, wParam, lParam);
    const bool mouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    if (mouse && !firesMouse()) return this->message(message, wParam, lParam);
    if (const int button = pressedButton(message)) fireMouseDown(button, shiftOf(wParam), place);
    switch (message) {
        case WM_SETFOCUS:
            focusCame(movesFocus(window(), reinterpret_cast<HWND>(wParam)));
            break;
        case WM_KILLFOCUS:
            focusWent(movesFocus(window(), reinterpret_cast<HWND>(wParam)));
            page_.focusMoves(reinterpret_cast<HWND>(wParam));
            break;
        case WM_MOUSEMOVE:
            moveMouse(wParam, place);
            break;
        case WM_KEYDOWN:
            if (answerKey(static_cast<UINT>(wParam))) return 0;
            break;
        case WM_CHAR:
            if (answerCharacter(static_cast<wchar_t>(wParam))) return 0;
            break;
        case WM_SYSCHAR:
            if (answerAccessKey(static_cast<wchar_t>(wParam))) return 0;
            break;
        case WM_GETDLGCODE:
            return dialogCodes(wParam, lParam);
        case WM_SETCURSOR:
            if (showBusyPointer(LOWORD(lParam))) return TRUE;
            break;
        case WM_GETOBJECT:
            if (const auto object = accessibleObject(wParam, lParam)) return *object;
            break;
        default:
            break;
    }
    // An event that took its own window away goes no further.
    if (!window()) return 0;
    const Skin* skin = attached_ ? look().skin() : nullptr;
    if (!skin) return this->message(message, wParam, lParam);
    if (const auto drawn = drawnBySkin(*skin, model_, window(), message, wParam, look())) return *drawn;
    const LRESULT result = this->message(message, wParam, lParam);
    if (window() && attached_) drawAgain(*skin, model_, window(), message, look());
    return result;
}

}  // namespace dravik::win32
