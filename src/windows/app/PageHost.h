// The place of a form's page in the program's window: where there is less height than the page needs it is
// scrolled, and goes to the control that has the focus.
#pragma once

#include "windows/app/DrawnWindow.h"
#include "windows/win32/FormPage.h"

namespace dravik::app {

class PageHost : public DrawnWindow {
  public:
    PageHost(HWND parent, SharedLook& look);

    // The page, whose parent is this window; null lets go of it.
    void show(win32::FormPage* page);
    void arrange();
    // Pixels, that of a scroll bar included where there is one.
    int leastWidth() const;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    void scrollTo(int position);
    void bringFocusIntoView();

    win32::FormPage* page_ = nullptr;
};

}  // namespace dravik::app
