// The opened parts as a strip of small pictures. A picture is decoded only when it comes into view, one at a
// time, so that thousands of parts open at once.
#pragma once

#include <list>
#include <string>
#include <unordered_map>
#include "windows/app/DrawnWindow.h"

#include "trainer/OpenedParts.h"
#include "ui/Signal.h"
#include "windows/win32/ToolTips.h"

namespace dravik::app {

class ThumbnailStrip : public DrawnWindow {
  public:
    ThumbnailStrip(HWND parent, SharedLook& look, trainer::OpenedParts& parts);

    int preferredHeight() const;
    // The display scale is another one.
    void forgetPictures();
    RECT itemPlace(int index) const;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    void showList();
    void showCurrent();
    void scrollTo(int to);
    void choose(int index);
    bool decodeOne();
    const engine::GreyImage* pictureOf(int index) const;

    trainer::OpenedParts& parts_;
    win32::ToolTips toolTips_;
    std::unordered_map<std::string, engine::GreyImage>
        pictures_;                 // by path; an empty one could not be decoded
    std::list<std::string> kept_;  // paths in the order of decoding
    ui::Connection listChanged_;
    ui::Connection currentChanged_;
    int scroll_ = 0;
};

}  // namespace dravik::app
