// What every peer does: it shows a widget model in a window, watches the model for changes and turns the
// operator's actions into the model's events. The page owns it; a peer whose window procedure is running
// lives on until that returns, so that an event may destroy the widget, the page or the platform.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/LayoutGeometry.h"
#include "ui/TypedAhead.h"
#include "ui/Widget.h"
#include "windows/win32/AnsweredWindow.h"
#include "windows/win32/Guard.h"
#include "windows/win32/NamedWindows.h"

namespace dravik::win32 {

class AccessibleContent;
class CellBoard;
class Look;
class Page;

// A place in a widget's own units.
struct ModelPlace {
    double x = 0;
    double y = 0;
};

class Peer : public AnsweredWindow, public std::enable_shared_from_this<Peer> {
  public:
    Peer(ui::Widget& model, Page& page);
    ~Peer() override;

    // Makes the window, shows the whole state in it and starts to watch the model. Called once.
    void start(HWND parent, Peer* container);
    // The model is going away: from now on the peer touches it no more.
    void detach() noexcept;
    bool attached() const noexcept { return attached_; }

    ui::Widget& model() const noexcept { return model_; }
    // The frame that the peer stands in, if any.
    Peer* container() const noexcept { return container_; }

    // Measured anew after sizeChanged() and when the look changes.
    const ui::Measure& measure();
    void forgetMeasure() noexcept { measured_.reset(); }
    // Its place among the windows of its parent.
    virtual RECT windowPlace(const ui::Box& box) const;
    // The window stands there already.
    virtual bool stands(const RECT& place) const;
    // The window has been given this place.
    virtual void placed(const ui::Box& box);
    // The window that it is a part of, when it has none of its own.
    virtual CellBoard* board() const { return nullptr; }

    // Shown and enabled, together with everything that it stands in.
    bool isUsable() const;
    // The Tab key comes to it; it takes the focus at all.
    virtual bool isTabStop() const { return takesFocus(); }
    virtual bool takesFocus() const { return false; }
    virtual void focus();
    // The key is for the control itself, not for the page.
    virtual bool wantsKey(UINT) const { return false; }
    // Enter on the focused control; false when it is the page's business.
    virtual bool pressEnter() { return false; }
    // The key was meant for the text that had the focus before.
    bool isTypedAhead(UINT key);
    virtual wchar_t mnemonic() const { return 0; }
    virtual void pressMnemonic() { focus(); }

    // What the window tells its parent.
    virtual void command(WORD, WORD) {}
    virtual std::optional<LRESULT> notify(NMHDR&) { return std::nullopt; }
    // Text colour and ground of a native control; nothing for those of the page.
    virtual HBRUSH colors(HDC) { return nullptr; }

    // Fonts and pictures are to be made anew.
    virtual void lookChanged();
    // Enabled as the model and what it stands in say.
    virtual void showEnabled();

    // A place as the model's mouse events give it, in the window's pixels, and back.
    virtual POINT toView(double x, double y) const;
    virtual ModelPlace fromView(POINT place) const;

    // The shift state is that of the models.
    void fireMouseDown(int button, int shift, POINT place);
    void fireMouseMove(int buttons, int shift, POINT place);

  protected:
    // Hidden: it is shown when it is placed for the first time.
    virtual HWND make(HWND parent) = 0;
    // The window that was made becomes this peer's.
    virtual void opened(HWND made);
    // The window shows the state of the model.
    virtual void started() {}
    virtual ui::Measure ask() = 0;
    // Shows one kind of change; every override passes on what it does not handle.
    virtual void show(ui::Change change);
    virtual HFONT wantedFont() const;
    // The window procedure, which may end with defaultAnswer().
    virtual LRESULT message(UINT message, WPARAM wParam, LPARAM lParam);
    // Mouse messages become events of the model as they come; a peer that says no fires them itself.
    virtual bool firesMouse() const { return true; }
    // For a window drawn by hand, what a screen reader finds in it.
    virtual AccessibleContent* accessibleContent() { return nullptr; }

    // A child window of the page's module, with a number of its own for the commands that it sends.
    HWND makeWindow(const wchar_t* className, HWND parent, DWORD style, DWORD extendedStyle = 0,
                    const std::wstring& text = {});
    void showText(const std::wstring& text);
    // Draws the window anew where it is seen.
    virtual void redraw() const;
    // The window's contents ask for another size now.
    void sizeChanged();

    // Runs what fires events of the model.
    template <class Body>
    void act(Body&& body) {
        if (attached_) guarded(std::forward<Body>(body));
    }
    Page& page() const noexcept { return page_; }
    Look& look() const noexcept;
    bool hasFocus() const noexcept { return focused_; }
    bool isStarted() const noexcept { return started_; }
    // The focus has come, or gone; the model is told when it moved inside of one window of the system.
    void focusCame(bool moved);
    void focusWent(bool moved);
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    std::shared_ptr<void> kept() override { return weak_from_this().lock(); }
    void windowGoes() override;
    void giveFocus();
    void showName();
    // Each answers one message; true when that is all that is to be done about it.
    bool fireKey(UINT key);
    bool answerKey(UINT key);
    bool answerCharacter(wchar_t character) const;
    bool answerAccessKey(wchar_t key) const;
    bool showBusyPointer(int hit) const;
    void moveMouse(WPARAM keys, POINT place);
    LRESULT dialogCodes(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> accessibleObject(WPARAM wParam, LPARAM lParam);

    ui::Widget& model_;
    Page& page_;
    const std::wstring name_;
    Peer* container_ = nullptr;
    ui::Connection changed_;
    std::optional<ui::Measure> measured_;
    LRESULT accessibleClass_ = 0;
    POINT lastMove_{-1, -1};
    ui::TypedAhead typedAhead_;
    bool attached_ = true;
    bool started_ = false;
    bool focused_ = false;
};

// The shift state of the models as the keys are now: kShiftMask, kCtrlMask, kAltMask.
int shiftState();
// The button that a message tells to be pressed, for the models; 0 for other messages.
int pressedButton(UINT message) noexcept;

template <class Model, class Kind = Peer>
class PeerOf : public Kind {
  public:
    PeerOf(Model& model, Page& page) : Kind(model, page), model_(model) {}

  protected:
    Model& model_;
};

}  // namespace dravik::win32
