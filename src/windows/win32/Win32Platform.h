// The platform of the screen in Windows: message boxes, forms in windows of their own, pop-up menus,
// clipboard, dates in the user's regional form. One object per shown screen; everything of it happens on one
// thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "ui/Platform.h"
#include "windows/win32/Ambient.h"

namespace dravik::win32 {

class FormWindow;
class Peer;

class Win32Platform : public ui::Platform {
  public:
    Win32Platform();
    // Ends its modal loops, whose callers return as if the operator had closed the dialog, and closes its
    // windows.
    ~Win32Platform() override;

    // The window of the surroundings over which everything comes up; without it the screen has windows
    // without owner.
    std::function<HWND()> owner;
    // True before and false after whatever is modal: boxes, dialogs, menus. Nested ones are counted, so that
    // it is told once each.
    std::function<void(bool)> modal;

    ui::Answer messageBox(const ui::MessageBox& box) override;
    void showModal(ui::Form& form) override;
    void show(ui::Form& form) override;
    void popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) override;
    // The same at a place of any window, in its client's pixels.
    void popUpMenu(ui::PopupMenu& menu, HWND over, POINT place);
    // Raises a failure (70 Permission denied) when another program keeps the clipboard to itself.
    void setClipboardText(const std::string& text) override;
    std::string fileDateText(const std::string& path) override;
    std::string dateText() override;
    std::string timeText() override;
    void setBusy(bool busy) override;

    // Of the child forms.
    const Ambient& ambient() const noexcept { return ambient_; }
    void setAmbient(const Ambient& ambient);

    bool busy() const noexcept { return busy_ > 0; }
    // The child form's window, nothing when it is not shown.
    FormWindow* windowOf(const ui::Form& form) const;
    // The host lets its own modeless windows be used or not; the child forms follow.
    void enableWindows(bool enabled);
    // System colours, theme or settings changed: the child forms are drawn anew.
    void systemChanged();

    // Which page has the focus in a top-level window, or had it when another window came to the front.
    void focusArrived(HWND page);
    // The focus went elsewhere in that window, or the page goes.
    void focusLeft(HWND page) noexcept;
    // To the page that had it in the window that is in front now, unless somebody else in there has it: when
    // a box, a menu or a form is gone the system gives it to the owning window alone.
    void giveFocusBack();

    // The peer that shows a widget now; kept by the peers.
    Peer* peerOf(const ui::Widget& widget) const;
    void addPeer(const ui::Widget& widget, Peer& peer);
    void removePeer(const ui::Widget& widget, const Peer& peer) noexcept;

  private:
    friend class ModalScope;
    struct State;

    // The window that a box or a dialog is to come up over.
    HWND currentOwner() const;

    // Outlives the platform inside of its modal loops.
    std::shared_ptr<State> state_;
    std::map<const ui::Form*, std::shared_ptr<FormWindow>> windows_;
    std::unordered_map<const ui::Widget*, Peer*> peers_;
    std::map<HWND, HWND> focusedPages_;  // by top-level window
    Ambient ambient_;
    int busy_ = 0;
    HCURSOR cursorBefore_ = nullptr;
};

}  // namespace dravik::win32
