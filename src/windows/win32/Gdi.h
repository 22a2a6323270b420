// Handles of the drawing interface that release themselves, and a picture to draw into.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "base/Handle.h"

namespace dravik::win32 {

template <class Type>
struct DrawingObject {
    using Value = Type;
    static Value none() noexcept { return nullptr; }
    static void close(Value object) noexcept { DeleteObject(object); }
};
template <class Type>
using GdiObject = Handle<DrawingObject<Type>>;

using Font = GdiObject<HFONT>;
using Brush = GdiObject<HBRUSH>;
using Pen = GdiObject<HPEN>;
using Bitmap = GdiObject<HBITMAP>;

// Selects an object into a context for as long as it lives.
class Selected {
  public:
    Selected(HDC dc, HGDIOBJ object) noexcept : dc_(dc), before_(SelectObject(dc, object)) {}
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;
    ~Selected() { SelectObject(dc_, before_); }

  private:
    HDC dc_;
    HGDIOBJ before_;
};

// A picture of 32 bits per pixel in memory, top row first, with a context to draw into it.
class Canvas {
  public:
    // Raises Out of memory (7).
    Canvas(int width, int height);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas();

    HDC dc() const noexcept { return dc_; }
    HBITMAP bitmap() const noexcept { return bitmap_.get(); }
    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    // 0xAARRGGBB; drawing of the system leaves the alpha byte 0.
    std::span<std::uint32_t> pixels() noexcept;
    const BITMAPINFO& info() const noexcept { return info_; }
    const void* bits() const noexcept { return bits_; }

  private:
    int width_;
    int height_;
    BITMAPINFO info_{};
    void* bits_ = nullptr;
    Bitmap bitmap_;
    HDC dc_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

// The client area of a window being painted, drawn in memory and shown at once when this object goes. For
// WM_PAINT, which it begins and ends.
class BufferedPaint {
  public:
    explicit BufferedPaint(HWND window);
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;
    ~BufferedPaint();

    HDC dc() const noexcept { return buffer_ ? buffer_->dc() : target_; }
    const RECT& client() const noexcept { return client_; }
    // What needs painting.
    const RECT& dirty() const noexcept { return paint_.rcPaint; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
    HDC target_ = nullptr;
    RECT client_{};
    std::optional<Canvas> buffer_;
};

constexpr int widthOf(const RECT& rect) {
    return rect.right - rect.left;
}
constexpr int heightOf(const RECT& rect) {
    return rect.bottom - rect.top;
}

// Extents of one line of text in the context's present font.
SIZE textExtent(HDC dc, const wchar_t* text, std::size_t length);

void fill(HDC dc, const RECT& place, COLORREF color);
// A frame of the given thickness inside of `place`.
void frame(HDC dc, const RECT& place, COLORREF color, int thickness);

}  // namespace dravik::win32
