// A window's own scroll bars: what they show, and where a request of WM_HSCROLL or WM_VSCROLL leads.
#pragma once

namespace dravik::win32 {

// `content` and `page` in units of the caller; a bar that is not needed goes. Returns the position, cut to
// the new range.
int setScrollBar(HWND window, int bar, int content, int page, int position);
// The position that `request` (SB_...) asks for, within the range. A page scrolls by what is seen less
// `overlap`.
int scrolledTo(HWND window, int bar, int request, int step, int overlap = 0);

}  // namespace dravik::win32
