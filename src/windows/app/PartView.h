// The current part image with a box around every found character and the label of each below it. Zooms with
// Ctrl and the wheel, pans by dragging, with the arrow keys and with the scroll bars.
#pragma once

#include <functional>
#include <vector>

#include "trainer/window/TrainerWindow.h"
#include "windows/app/DrawnWindow.h"

namespace dravik::app {

class PartView : public DrawnWindow, private win32::AccessibleContent {
  public:
    // The model outlives the view.
    PartView(HWND parent, SharedLook& look, trainer::TrainerWindow& model);

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
    void paintTag(HDC dc, const trainer::CharacterMark& mark);

    trainer::TrainerWindow& all_;
    trainer::PartViewModel& model_;
    bool showing_ = false;
    ui::Connection changed_;
};

}  // namespace dravik::app
