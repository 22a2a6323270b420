// The inside of FormPage: the window, one peer for each widget, their order, their places, timers, tool tips
// and keys.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/Form.h"
#include "ui/LayoutGeometry.h"
#include "windows/win32/Ambient.h"
#include "windows/win32/AnsweredWindow.h"
#include "windows/win32/CellBoard.h"
#include "windows/win32/Look.h"
#include "windows/win32/Peer.h"
#include "windows/win32/ToolTips.h"

namespace dravik::win32 {

class Win32Platform;

class Page : public AnsweredWindow, public std::enable_shared_from_this<Page> {
  public:
    static constexpr UINT kGiveFocusBack = WM_APP + 0x35;

    Page(ui::Form& form, Win32Platform& platform, int dpi, const Ambient& ambient);
    ~Page() override;

    void create(HWND parent);
    // Lets the model go and destroys the window.
    void close() noexcept;
    void detach() noexcept;
    bool attached() const noexcept { return attached_; }

    Win32Platform& platform() const noexcept { return platform_; }
    Look& look() noexcept { return *look_; }
    ToolTips& toolTips() noexcept { return toolTips_; }
    ui::Form& form() const noexcept { return form_; }

    ui::Extent minimum() const;
    ui::Extent preferred() const;
    void setDpi(int dpi);
    void setAmbient(const Ambient& ambient);
    void setInert(bool inert);
    bool inert() const noexcept { return inert_; }
    // While the focus is outside, the form's default button is marked only when this is wanted.
    void setDefaultShown(bool shown);
    void systemChanged();

    // Everything again where it belongs: at once, and as soon as the running procedure is through.
    void arrange();
    void arrangeSoon();
    // Before the page is first seen; nothing is placed until then.
    void arrangeFirst();
    // Makes room for widgets in a container's inside.
    ui::LayoutGeometry geometryOf(const ui::Layout& layout) const;
    void place(const std::vector<ui::PlacedWidget>& placed);

    // Peers for all widgets of a container, in the order of its layout.
    void addPeers(const ui::Layout& layout, HWND parent, Peer* container);
    void addWindow(HWND window, Peer& peer) { byWindow_[window] = &peer; }
    void removeWindow(HWND window) noexcept { byWindow_.erase(window); }
    Peer* peerOf(HWND window) const;
    const std::vector<std::shared_ptr<Peer>>& peers() const noexcept { return peers_; }
    UINT nextId() noexcept { return ++lastId_; }

    // WM_COMMAND, WM_NOTIFY and WM_CTLCOLOR... of child windows, also of those inside frames.
    std::optional<LRESULT> fromChild(UINT message, WPARAM wParam, LPARAM lParam);

    bool translateKey(const MSG& message, bool& leftPage);
    // A key that no host has translated; Tab goes round then.
    bool answerKey(Peer& focused, UINT key);
    // The page answers the key itself; Tab at its end is left to the dialog that it may stand in.
    bool wouldAnswer(const Peer& focused, UINT key) const;
    bool focusEnd(bool last);
    bool restoreFocus();
    bool hasFocusInside() const;
    std::vector<wchar_t> mnemonics() const;
    bool pressMnemonic(wchar_t key);
    void focusArrived(Peer& peer);
    // The focus goes from one of the controls to another window, which may be one of the page's own.
    void focusMoves(HWND to);
    // The focused control is being hidden or was disabled: the next one takes over.
    void focusLeft(Peer& peer);
    void focusLeavesSoon(const Peer& peer);
    void focusLater(Peer& peer);

    void draw(HDC dc, const RECT& place);

    std::function<void()> sizeChanged;
    std::function<void()> focusEntered;
    std::function<void()> focusGone;
    std::function<void()> escaped;
    std::function<void()> appearanceChanged;
    std::function<void()> mnemonicsChanged;
    // A control shows something else than before; tells the two listeners above, some time later and once
    // for many such changes.
    void changed();

  private:
    void tellChange();
    // Whoever is told may take the page away, and the listener with it.
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    static void tell(std::function<void()> listener) {
        if (listener) listener();
    }
    // Draws a window and those in it, `origin` being the screen's place of the context's origin; all of it as
    // pictures, or what this code draws as lines and texts.
    void drawWindow(HDC dc, HWND window, POINT origin, bool asPicture) const;
    bool isDrawnByHand(HWND window) const;
    // Messages to the page itself, for what is to be done when the running procedure is through.
    static constexpr UINT kArrange = WM_APP + 0x31;
    static constexpr UINT kFocus = WM_APP + 0x32;
    static constexpr UINT kFocusLeft = WM_APP + 0x33;
    static constexpr UINT kChanged = WM_APP + 0x34;

    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Each answers one message, of the page's window or of one in it.
    void fillGround(HDC dc) const;
    void focusAsPosted(HWND control);
    void leaveAsPosted(HWND control);
    void timerFired(std::size_t number);
    std::shared_ptr<Peer> childPeer(HWND window) const;
    bool commandFrom(HWND child, WPARAM command);
    std::optional<LRESULT> notificationFrom(NMHDR& header);
    std::optional<LRESULT> colorsOf(HWND child, HDC dc, bool mayBeList);
    std::shared_ptr<void> kept() override { return weak_from_this().lock(); }
    void renewLook(int dpi, const Ambient& ambient);
    void followTimers();
    void showTimer(std::size_t index);
    void tick(std::size_t index);
    // The stop that Tab leads to from a control, or the first or last one from nowhere; nothing at the end.
    Peer* nextStop(const Peer* from, bool backwards) const;
    bool moveFocus(Peer* from, bool backwards);
    bool answerKey(Peer* focused, UINT key, bool& leftPage);
    std::vector<Peer*> tabStops() const;
    Peer* buddyOf(const Peer& label) const;
    // The button that Enter presses while the focus is there; null when it is outside.
    void showDefaultButton(Peer* focused);
    // The button that Enter presses in that control, which is none itself; nothing for none.
    ui::Button* defaultFor(const Peer* focused) const;

    ui::Form& form_;
    Win32Platform& platform_;
    std::unique_ptr<Look> look_;
    ToolTips toolTips_;
    std::vector<std::shared_ptr<Peer>> peers_;
    std::vector<std::shared_ptr<CellBoard>> boards_;
    std::unordered_map<HWND, Peer*> byWindow_;
    std::vector<ui::Connection> connections_;
    HWND lastFocus_ = nullptr;
    ui::Extent knownPreferred_;
    UINT lastId_ = 1000;
    bool attached_ = true;
    bool inert_ = false;
    bool open_ = false;
    bool defaultShown_ = true;
    bool arranging_ = false;
    bool willArrange_ = false;
    bool ticking_ = false;
    bool willTellChange_ = false;
    std::vector<wchar_t> toldMnemonics_;
};

}  // namespace dravik::win32
