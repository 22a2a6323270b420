#include "windows/win32/Gdi.h"

#include <algorithm>

#include "base/Failure.h"

namespace dravik::win32 {

Canvas::Canvas(int width, int height) : width_(std::max(width, 1)), height_(std::max(height, 1)) {
    info_.bmiHeader.biSize = sizeof info_.bmiHeader;
    info_.bmiHeader.biWidth = width_;
    info_.bmiHeader.biHeight = -height_;
    info_.bmiHeader.biPlanes = 1;
    info_.bmiHeader.biBitCount = 32;
    info_.bmiHeader.biCompression = BI_RGB;
    bitmap_ = Bitmap(CreateDIBSection(nullptr, &info_, DIB_RGB_COLORS, &bits_, nullptr, 0));
    dc_ = CreateCompatibleDC(nullptr);
    if (!bitmap_ || !dc_) {
        if (dc_) DeleteDC(dc_);
        throw Failure(RuntimeError::OutOfMemory);
    }
    before_ = SelectObject(dc_, bitmap_.get());
}

Canvas::~Canvas() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
}

std::span<std::uint32_t> Canvas::pixels() noexcept {
    GdiFlush();
    return {static_cast<std::uint32_t*>(bits_),
            static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)};
}

BufferedPaint::BufferedPaint(HWND window) : window_(window) {
    target_ = BeginPaint(window, &paint_);
    GetClientRect(window, &client_);
    if (!target_ || IsRectEmpty(&paint_.rcPaint)) return;
    try {
        buffer_.emplace(client_.right, client_.bottom);
    } catch (const Failure&) {
        buffer_.reset();  // too little memory: straight to the screen
    }
}

BufferedPaint::~BufferedPaint() {
    if (buffer_) {
        const RECT& part = paint_.rcPaint;
        BitBlt(target_, part.left, part.top, widthOf(part), heightOf(part), buffer_->dc(), part.left,
               part.top, SRCCOPY);
    }
    EndPaint(window_, &paint_);
}

SIZE textExtent(HDC dc, const wchar_t* text, std::size_t length) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text, static_cast<int>(length), &size);
    return size;
}

void fill(HDC dc, const RECT& place, COLORREF color) {
    // Not by the context's own brush, whose colour a metafile does not keep.
    const COLORREF before = SetBkColor(dc, color);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &place, L"", 0, nullptr);
    SetBkColor(dc, before);
}

void frame(HDC dc, const RECT& place, COLORREF color, int thickness) {
    if (IsRectEmpty(&place)) return;
    const int t = std::min({thickness, widthOf(place), heightOf(place)});
    fill(dc, {place.left, place.top, place.right, place.top + t}, color);
    fill(dc, {place.left, place.bottom - t, place.right, place.bottom}, color);
    fill(dc, {place.left, place.top + t, place.left + t, place.bottom - t}, color);
    fill(dc, {place.right - t, place.top + t, place.right, place.bottom - t}, color);
}

}  // namespace dravik::win32
