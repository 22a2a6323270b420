// What the current font reads in the current image, line by line. Weak characters are underlined with a wave,
// and the tool tip of every character says how sure the font is. Ctrl+C copies the text.
#pragma once

#include "activex/host/DrawnWindow.h"
// Behind the Windows headers
#include "activex/win32/ToolTips.h"
#include "trainer/Trainer.h"
#include "widgets/Platform.h"

namespace dravik {

class ReadingView : public DrawnWindow {
  public:
    ReadingView(HWND parent, SharedLook& look, Platform& platform);

    void setReading(const Reading& reading);
    // Of up to three lines.
    int preferredHeight();

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    HFONT textFont();
    std::wstring text() const;
    void showToolTips();

    Platform& platform_;
    ToolTips toolTips_;
    Reading reading_;
    Font font_;
    int fontDpi_ = 0;
    UINT shownTips_ = 0;
};

}  // namespace dravik
