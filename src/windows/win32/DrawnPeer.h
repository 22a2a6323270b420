// A peer whose window is drawn and driven by code of its own.
#pragma once

#include "windows/win32/DrawnAnswer.h"
#include "windows/win32/Peer.h"

namespace dravik::win32 {

class DrawnPeer : public Peer {
  public:
    using Peer::Peer;

  protected:
    // A window of a class for this kind alone. It sends no commands, and so has no number.
    HWND makeDrawn(const wchar_t* className, HWND parent, DWORD style = 0, const std::wstring& text = {},
                   DWORD extendedStyle = 0);
    void show(ui::Change change) override;
    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override;
    // `dirty` is what needs painting.
    virtual void paint(HDC dc, const RECT& client, const RECT& dirty) = 0;
    // The menu key, or Shift+F10.
    virtual void menuKeyPressed() {}
    // Any other key.
    virtual void keyPressed(UINT) {}
    POINT centre() const;
};

}  // namespace dravik::win32
