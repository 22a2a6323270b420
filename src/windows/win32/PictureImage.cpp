#include "windows/win32/PictureImage.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dravik::win32 {
namespace {

constexpr double kPictureSide = 16.0;
constexpr int kFine = 4;  // drawn that many times larger, then averaged

POINT placeOf(const ui::PicturePoint& point, double scale) {
    return {static_cast<LONG>(std::lround(point.x * scale)), static_cast<LONG>(std::lround(point.y * scale))};
}

// White where the shape covers the fine canvas.
void drawShape(HDC dc, const ui::PictureShape& shape, double scale) {
    const COLORREF white = RGB(255, 255, 255);
    LOGBRUSH ink{BS_SOLID, white, 0};
    const auto width = static_cast<DWORD>(std::max(1L, std::lround(shape.strokeWidth * scale)));
    const Pen pen(
        shape.strokeWidth > 0
            ? ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND, width, &ink, 0, nullptr)
            : CreatePen(PS_NULL, 0, 0));
    const Selected selectedPen(dc, pen.get());
    const Selected selectedBrush(dc, GetStockObject(shape.filled ? WHITE_BRUSH : NULL_BRUSH));
    std::vector<POINT> points;
    for (const auto& point : shape.points) points.push_back(placeOf(point, scale));
    if (points.empty()) return;
    switch (shape.kind) {
        case ui::PictureShape::Kind::Polyline:
            Polyline(dc, points.data(), static_cast<int>(points.size()));
            break;
        case ui::PictureShape::Kind::Polygon:
            Polygon(dc, points.data(), static_cast<int>(points.size()));
            break;
        case ui::PictureShape::Kind::Ellipse: {
            const auto [left, right] = std::minmax(points.front().x, points.back().x);
            const auto [top, bottom] = std::minmax(points.front().y, points.back().y);
            Ellipse(dc, left, top, right, bottom);
            break;
        }
    }
}

std::uint32_t over(std::uint32_t ground, COLORREF color, int coverage) {
    const auto mix = [&](int shift, int part) {
        const int below = static_cast<int>(ground >> shift & 0xFF);
        return static_cast<std::uint32_t>((part * coverage + below * (255 - coverage) + 127) / 255) << shift;
    };
    return mix(24, 255) | mix(16, GetRValue(color)) | mix(8, GetGValue(color)) | mix(0, GetBValue(color));
}

}  // namespace

std::unique_ptr<Canvas> pictureImage(const ui::Picture& picture, int side, const Look& look) {
    auto image = std::make_unique<Canvas>(side, side);
    Canvas fine(side * kFine, side * kFine);
    const double scale = side * kFine / kPictureSide;
    const auto target = image->pixels();
    std::fill(target.begin(), target.end(), 0u);
    for (const ui::PictureShape& shape : picture) {
        const auto mask = fine.pixels();
        std::fill(mask.begin(), mask.end(), 0u);
        drawShape(fine.dc(), shape, scale);
        const auto drawn = fine.pixels();
        const COLORREF color = look.color(shape.color);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                int covered = 0;
                for (int j = 0; j < kFine; ++j)
                    for (int i = 0; i < kFine; ++i)
                        covered +=
                            (drawn[static_cast<std::size_t>((y * kFine + j) * side * kFine + x * kFine + i)] &
                             0xFF) != 0;
                if (covered == 0) continue;
                auto& pixel = target[static_cast<std::size_t>(y * side + x)];
                pixel = over(pixel, color, covered * 255 / (kFine * kFine));
            }
    }
    return image;
}

void drawPicture(HDC dc, Canvas& image, int left, int top, double opacity) {
    const BLENDFUNCTION blending{AC_SRC_OVER, 0, static_cast<BYTE>(std::lround(opacity * 255)), AC_SRC_ALPHA};
    GdiAlphaBlend(dc, left, top, image.width(), image.height(), image.dc(), 0, 0, image.width(),
                  image.height(), blending);
}

}  // namespace dravik::win32
