// The current part image with a box around every found character, the label of each below it and what the
// font reads above it. Zooms with Ctrl and the wheel, pans by dragging, with the arrow keys and with the
// scroll bars; in the modes of its model the region is drawn and boxes are corrected.
#pragma once

#include <functional>
#include <vector>

#include "trainer/window/TrainerWindow.h"
#include "windows/app/DrawnWindow.h"
#include "windows/win32/ToolTips.h"

namespace dravik::win32 {
class Win32Platform;
}

namespace dravik::app {

class PartView : public DrawnWindow, private win32::AccessibleContent {
  public:
    // The model and the platform outlive the view.
    PartView(HWND parent, SharedLook& look, trainer::TrainerWindow& model, win32::Win32Platform& platform);
    ~PartView() override;

    // A key by its virtual number; Tab, too, which the pane asks for before it goes on to the next window.
    bool takesKey(WPARAM virtualKey);

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;
    win32::AccessibleContent* accessible() override { return this; }

  private:
    LONG role() const override { return ROLE_SYSTEM_GRAPHIC; }
    std::wstring name() const override;
    std::wstring description() const override;

    void showState();
    void paintMessage(HDC dc, const RECT& client);
    void paintCharacters(HDC dc);
    void paintFrame(HDC dc, const trainer::ViewFrame& frame);
    void paintTag(HDC dc, const trainer::ViewTag& tag);
    void showTip(trainer::ViewPoint place);
    HCURSOR cursor() const;

    trainer::TrainerWindow& all_;
    trainer::PartViewModel& model_;
    bool showing_ = false;
    bool releasing_ = false;
    win32::ToolTips toolTips_;
    int tipOf_ = -1;
    ui::Connection changed_, focusWanted_;
};

}  // namespace dravik::app
