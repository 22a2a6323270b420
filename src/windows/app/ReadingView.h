// What the current font reads in the current image, line by line. Weak characters are underlined with a wave,
// and the tool tip of every character says how sure the font is. Ctrl+C copies the text.
#pragma once

#include "trainer/Trainer.h"
#include "ui/Platform.h"
#include "windows/app/DrawnWindow.h"
#include "windows/win32/ToolTips.h"

namespace dravik::app {

class ReadingView : public DrawnWindow {
  public:
    ReadingView(HWND parent, SharedLook& look, ui::Platform& platform);

    void setReading(const trainer::Reading& reading);
    // Of up to three lines.
    int preferredHeight();

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    HFONT textFont();
    std::wstring text() const;
    void showToolTips();

    ui::Platform& platform_;
    win32::ToolTips toolTips_;
    trainer::Reading reading_;
    win32::Font font_;
    int fontDpi_ = 0;
    UINT shownTips_ = 0;
};

}  // namespace dravik::app
