// Keyboard of a page: which control Tab, Enter, Escape and the access keys lead to.
#include <algorithm>
#include <utility>

#include "windows/win32/Page.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {}  // namespace

std::vector<Peer*> Page::tabStops() const {
    std::vector<Peer*> stops;
    for (const auto& peer : peers_)
        if (peer->isUsable() && peer->isTabStop()) stops.push_back(peer.get());
    return stops;
}

Peer* Page::nextStop(const Peer* from, bool backwards) const {
    const auto place = [this](const Peer* peer) {
        return std::find_if(peers_.begin(), peers_.end(),
                            [peer](const auto& known) { return known.get() == peer; }) -
               peers_.begin();
    };
    const std::vector<Peer*> stops = tabStops();
    if (stops.empty()) return nullptr;
    if (!from) return backwards ? stops.back() : stops.front();
    Peer* next = nullptr;
    // The focus may be on a control that Tab does not come to.
    for (Peer* stop : stops) {
        if (!backwards && place(stop) > place(from) && !next) next = stop;
        if (backwards && place(stop) < place(from)) next = stop;
    }
    return next;
}

bool Page::moveFocus(Peer* from, bool backwards) {
    Peer* next = nextStop(from, backwards);
    if (next) next->focus();
    return next != nullptr;
}

bool Page::focusEnd(bool last) {
    return attached_ && window() && !inert_ && moveFocus(nullptr, last);
}

bool Page::restoreFocus() {
    if (!attached_ || inert_) return false;
    if (Peer* peer = lastFocus_ ? peerOf(lastFocus_) : nullptr; peer && peer->isUsable()) {
        peer->focus();
        return true;
    }
    return focusEnd(false);
}

bool Page::hasFocusInside() const {
    const HWND focus = GetFocus();
    return focus && window() && (focus == window() || IsChild(window(), focus));
}

void Page::focusArrived(Peer& peer) {
    lastFocus_ = peer.window();
    if (attached_) platform_.focusArrived(window());
    showDefaultButton(&peer);
    tell(focusEntered);
}

void Page::focusMoves(HWND to) {
    if (to && (to == window() || IsChild(window(), to))) return;
    if (attached_ && to && GetAncestor(to, GA_ROOT) == GetAncestor(window(), GA_ROOT))
        platform_.focusLeft(window());
    showDefaultButton(nullptr);
    tell(focusGone);
}

void Page::focusLeft(Peer& peer) {
    if (!attached_) return;
    if (!moveFocus(&peer, false) && !moveFocus(nullptr, false) && window()) SetFocus(window());
}

// The procedure that disables a control often enables its successor only afterwards.
void Page::focusLeavesSoon(const Peer& peer) {
    if (window()) PostMessageW(window(), kFocusLeft, reinterpret_cast<WPARAM>(peer.window()), 0);
}

void Page::focusLater(Peer& peer) {
    if (window()) PostMessageW(window(), kFocus, reinterpret_cast<WPARAM>(peer.window()), 0);
}

ui::Button* Page::defaultFor(const Peer* focused) const {
    const bool elsewhere = form_.defaultField && focused && &focused->model() != form_.defaultField;
    return elsewhere ? nullptr : form_.defaultButton;
}

// The button that Enter presses is the one that has the focus, else the form's own.
void Page::showDefaultButton(Peer* focused) {
    if (!attached_) return;
    const bool button = focused && focused->model().kind() == ui::WidgetKind::Button;
    const ui::Widget* wanted = button                     ? &focused->model()
                               : focused || defaultShown_ ? defaultFor(focused)
                                                          : nullptr;
    for (const auto& peer : peers_) {
        if (!peer->attached() || peer->model().kind() != ui::WidgetKind::Button || !peer->window()) continue;
        const auto style = static_cast<UINT>(GetWindowLongPtrW(peer->window(), GWL_STYLE)) & BS_TYPEMASK;
        const UINT shown = &peer->model() == wanted ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if (style != shown) SendMessageW(peer->window(), BM_SETSTYLE, shown, TRUE);
    }
}

void Page::setDefaultShown(bool shown) {
    if (std::exchange(defaultShown_, shown) != shown && window()) showDefaultButton(peerOf(GetFocus()));
}

bool Page::answerKey(Peer* focused, UINT key, bool& leftPage) {
    leftPage = false;
    if (!attached_ || inert_) return false;
    const int shift = shiftState();
    if (key == VK_TAB) {
        if (shift & (ui::kCtrlMask | ui::kAltMask)) return false;
        leftPage = !moveFocus(focused, (shift & ui::kShiftMask) != 0);
        return !leftPage;
    }
    if (shift != 0) return false;
    if (focused && focused->isTypedAhead(key)) return true;
    if (key == VK_RETURN) {
        if (focused && focused->pressEnter()) return true;
        if (!form_.defaultButton) return false;
        // Where it presses nothing it is not the host's either, whose own default button may close the page.
        if (ui::Button* const button = defaultFor(focused))
            guarded([button] { button->press(); });
        else if (focused && focused->model().kind() == ui::WidgetKind::TextBox)
            form_.defaultField->setFocus();
        return true;
    }
    if (key == VK_ESCAPE && form_.cancelButton) {
        guarded([this] { form_.cancelButton->press(); });
        return true;
    }
    return false;
}

bool Page::wouldAnswer(const Peer& focused, UINT key) const {
    if (!attached_ || inert_ || focused.wantsKey(key)) return false;
    const int shift = shiftState();
    switch (key) {
        case VK_TAB:
            return (shift & (ui::kCtrlMask | ui::kAltMask)) == 0 &&
                   nextStop(&focused, (shift & ui::kShiftMask) != 0);
        case VK_RETURN:
            return shift == 0 && (form_.defaultButton || focused.model().kind() == ui::WidgetKind::Button);
        case VK_ESCAPE:
            return shift == 0 && form_.cancelButton;
        default:
            return false;
    }
}

bool Page::translateKey(const MSG& message, bool& leftPage) {
    leftPage = false;
    if (!attached_ || inert_ || !window()) return false;
    if (message.hwnd != window() && !IsChild(window(), message.hwnd)) return false;
    if (message.message == WM_SYSCHAR) return pressMnemonic(static_cast<wchar_t>(message.wParam));
    if (message.message != WM_KEYDOWN) return false;
    const auto key = static_cast<UINT>(message.wParam);
    Peer* focused = peerOf(message.hwnd);
    if (focused && focused->wantsKey(key)) return false;
    return answerKey(focused, key, leftPage);
}

bool Page::answerKey(Peer& focused, UINT key) {
    bool leftPage = false;
    if (answerKey(&focused, key, leftPage)) return true;
    if (leftPage) {
        moveFocus(nullptr, shiftState() & ui::kShiftMask);
        return true;
    }
    if (key != VK_ESCAPE || shiftState() != 0 || !attached_ || !escaped) return false;
    tell(escaped);
    return true;
}

// A label's access key goes to the control after it.
Peer* Page::buddyOf(const Peer& label) const {
    bool after = false;
    for (const auto& peer : peers_) {
        if (after && peer->takesFocus()) return peer->isUsable() ? peer.get() : nullptr;
        after = after || peer.get() == &label;
    }
    return nullptr;
}

std::vector<wchar_t> Page::mnemonics() const {
    std::vector<wchar_t> keys;
    for (const auto& peer : peers_) {
        if (!peer->isUsable()) continue;
        const wchar_t key = peer->mnemonic();
        if (key && (peer->takesFocus() || buddyOf(*peer))) keys.push_back(key);
    }
    return keys;
}

bool Page::pressMnemonic(wchar_t key) {
    if (!attached_ || inert_) return false;
    CharUpperBuffW(&key, 1);
    for (const auto& peer : peers_) {
        if (!peer->isUsable() || key == 0 || peer->mnemonic() != key) continue;
        Peer* target = peer->takesFocus() ? peer.get() : buddyOf(*peer);
        if (!target) continue;
        const auto kept = target->shared_from_this();
        const bool own = target == peer.get();
        if (own)
            kept->pressMnemonic();
        else
            kept->focus();
        return true;
    }
    return false;
}

}  // namespace dravik::win32
