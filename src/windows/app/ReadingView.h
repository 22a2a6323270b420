// What the current font reads in the current image. Weak characters are underlined with a wave, and the tool
// tip of every character says how sure the font is. Ctrl+C copies the text.
#pragma once

#include "trainer/Trainer.h"
#include "trainer/window/ReadingModel.h"
#include "ui/Platform.h"
#include "windows/app/DrawnWindow.h"
#include "windows/win32/ToolTips.h"

namespace dravik::app {

class ReadingView : public DrawnWindow, private win32::AccessibleContent {
  public:
    // The model and the platform outlive the view.
    ReadingView(HWND parent, SharedLook& look, trainer::ReadingModel& model, ui::Platform& platform);

    int preferredHeight();
    // What is read or the display scale is another.
    void showReading();

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;
    win32::AccessibleContent* accessible() override { return this; }

  private:
    LONG role() const override { return ROLE_SYSTEM_TEXT; }
    LONG state() const override { return STATE_SYSTEM_READONLY; }
    std::wstring name() const override;
    std::wstring description() const override;

    HFONT textFont();
    // Calls `body` with every span and its place.
    template <class Body>
    void forSpans(Body&& body);
    void showToolTips();

    trainer::ReadingModel& model_;
    ui::Platform& platform_;
    win32::ToolTips toolTips_;
    win32::Font font_;
    int fontDpi_ = 0;
    UINT shownTips_ = 0;
    ui::Connection changed_;
};

}  // namespace dravik::app
