// A form with all its controls as a child window: laid out, watched and driven. It stands in a window of its
// own (FormWindow), in a program's window or inside an OLE control, which hands it keys, bounds and ambient
// properties. One thread only, the one that made it. The page may be destroyed while it handles an event.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "ui/Form.h"
#include "windows/win32/Ambient.h"

namespace dravik::win32 {

class Page;
class Win32Platform;

class FormPage {
  public:
    // Makes the window, hidden and of preferred size, at the parent's display scale. What is in it gets its
    // place when the page is first given bounds, shown or drawn. The platform outlives it. Raises a failure
    // when no window can be made.
    FormPage(ui::Form& form, HWND parent, Win32Platform& platform, const Ambient& ambient = {});
    FormPage(const FormPage&) = delete;
    FormPage& operator=(const FormPage&) = delete;
    ~FormPage();

    // Nothing once the window is gone, as it is when its parent was destroyed.
    HWND window() const noexcept;
    // The form is going away: stops the timers and touches the model no more. Comes by itself when the form
    // is destroyed.
    void detach() noexcept;

    // Pixels at the page's display scale; below the minimum it is cut off at the right and bottom.
    SIZE minimumSize() const;
    SIZE preferredSize() const;
    // Places the window, in its parent's client coordinates, and everything in it.
    void setBounds(const RECT& bounds);
    void setVisible(bool visible);
    // Dots per inch, 96 to 480. Makes fonts and pictures anew and lays out.
    void setDpi(int dpi);
    int dpi() const noexcept;
    void setAmbient(const Ambient& ambient);
    // An inert page shows everything, but takes no input and runs no timer, as a form designer wants it.
    void setInert(bool inert);
    // Whether the form's default button is marked while the focus is outside of the page; it is unless said
    // so.
    void setDefaultShown(bool shown);
    // Enter presses a button.
    bool answersEnter() const noexcept;
    // A system colour, theme or font setting changed; for whoever gets WM_SYSCOLORCHANGE, WM_THEMECHANGED and
    // WM_SETTINGCHANGE in its top-level window.
    void systemChanged();

    // A key message for a window of this page, before it is translated and dispatched. True: it is answered.
    // Tab and Shift+Tab at the last and first control are not: they set `leftPage`.
    bool translateKey(const MSG& message, bool& leftPage);
    // False when nothing in it takes the focus.
    bool focusFirst();
    bool focusLast();
    bool hasFocusInside() const;
    // Gives the focus back to the control that had it last, else to the first one.
    bool restoreFocus();
    // The top-level window comes to the front: gives the focus back if it was in the page when another window
    // came before it, unless somebody else in the window has taken it by then.
    void giveFocusBackSoon();

    // Upper-case access keys of the controls that are visible and enabled.
    std::vector<wchar_t> mnemonics() const;
    // As Alt and that key: true when a control answers.
    bool pressMnemonic(wchar_t key);

    // Draws the page with all its controls as they are now, scaled to `place` (logical units of `dc`):
    // memory, screen, metafile or printer. The window need not be visible.
    void draw(HDC dc, const RECT& place) const;

    // Called when preferredSize() may have changed, and when a control of the page got the focus.
    std::function<void()> sizeChanged;
    std::function<void()> focusEntered;
    // Called when the focus went from a control of the page to a window outside of it.
    std::function<void()> focusLeft;
    // Called when a control shows something else than before, and when mnemonics() has changed; some time
    // later, once for many such changes.
    std::function<void()> appearanceChanged;
    std::function<void()> mnemonicsChanged;
    // Escape in a form without cancel button, when the page sees the key itself because no host translated
    // it.
    std::function<void()> escaped;

  private:
    std::shared_ptr<Page> page_;
};

}  // namespace dravik::win32
