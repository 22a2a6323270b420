// The opened parts as a list of small pictures with their names.
#pragma once

#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "trainer/window/PartStrip.h"
#include "windows/app/DrawnWindow.h"
#include "windows/win32/ToolTips.h"

namespace dravik::app {

class ThumbnailStrip : public DrawnWindow, private win32::AccessibleContent {
  public:
    // The model outlives the view.
    ThumbnailStrip(HWND parent, SharedLook& look, trainer::PartStrip& strip);

    int preferredHeight() const;
    int leastHeight() const;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;
    win32::AccessibleContent* accessible() override { return this; }

  private:
    LONG role() const override { return ROLE_SYSTEM_LIST; }
    LONG childRole(int) const override { return ROLE_SYSTEM_LISTITEM; }
    std::wstring name() const override;
    int children() const override { return strip_.count(); }
    std::wstring childName(int child) const override;
    RECT childPlace(int child) const override { return rectOf(strip_.itemPlace(child - 1)); }
    LONG childState(int child) const override;
    int focusedChild() const override { return strip_.current() + 1; }
    void focusChild(int child) override;

    void showState();
    void paintItem(HDC dc, int index);
    void showTip(int index);

    trainer::PartStrip& strip_;
    win32::ToolTips toolTips_;
    int focused_ = 0;  // the child that screen readers were told of
    ui::Connection changed_;
};

}  // namespace dravik::app
