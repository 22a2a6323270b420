#include "windows/win32/ScrollBar.h"

#include <algorithm>

namespace dravik::win32 {

int setScrollBar(HWND window, int bar, int content, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(content - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 1));
    info.nPos = std::clamp(position, 0, std::max(content - page, 0));
    SetScrollInfo(window, bar, &info, TRUE);
    return info.nPos;
}

int scrolledTo(HWND window, int bar, int request, int step, int overlap) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, bar, &info);
    const int seen = std::max(static_cast<int>(info.nPage), 1);
    const int page = std::max(seen - overlap, 1);
    int to = info.nPos;
    switch (request) {
        case SB_LINEUP:
            to -= step;
            break;
        case SB_LINEDOWN:
            to += step;
            break;
        case SB_PAGEUP:
            to -= page;
            break;
        case SB_PAGEDOWN:
            to += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            to = info.nTrackPos;
            break;
        case SB_TOP:
            to = 0;
            break;
        case SB_BOTTOM:
            to = info.nMax;
            break;
        default:
            break;
    }
    return std::clamp(to, 0, std::max(info.nMax - seen + 1, 0));
}

}  // namespace dravik::win32
