#include "windows/app/GreyPicture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dravik::app {
namespace {

constexpr double kSmoothUpTo = 3;  // enlarged more than that, the pixels themselves are of interest

// What one row or column of the picture is made of: a range of the image's, or two of them mixed.
struct Mix {
    int first = 0;
    int last = 0;         // inclusive
    int shareOfLast = 0;  // of 256, when two are mixed
};

std::vector<Mix> mixes(int imageLength, int placeStart, int placeLength, int seenStart, int seenLength) {
    const double step = double(imageLength) / placeLength;
    const bool shrinks = step > 1;
    const bool smooth = !shrinks && 1 / step < kSmoothUpTo;
    std::vector<Mix> result;
    for (int i = 0; i < seenLength; ++i) {
        const double from = (seenStart - placeStart + i) * step;
        Mix mix;
        if (shrinks) {
            mix.first = static_cast<int>(from);
            mix.last = static_cast<int>(std::ceil(from + step)) - 1;
        } else if (smooth) {
            const double centre = from + step / 2 - 0.5;
            mix.first = static_cast<int>(std::floor(centre));
            mix.last = mix.first + 1;
            mix.shareOfLast = static_cast<int>((centre - mix.first) * 256);
        } else {
            mix.first = mix.last = static_cast<int>(from + step / 2);
        }
        mix.first = std::clamp(mix.first, 0, imageLength - 1);
        mix.last = std::clamp(mix.last, mix.first, imageLength - 1);
        result.push_back(mix);
    }
    return result;
}

bool mixesTwo(const Mix& mix) {
    return mix.shareOfLast > 0 && mix.last == mix.first + 1;
}

}  // namespace

std::unique_ptr<win32::Canvas> greyPicture(const engine::GreyImage& image, const RECT& place,
                                           const RECT& seen) {
    auto picture = std::make_unique<win32::Canvas>(win32::widthOf(seen), win32::heightOf(seen));
    const auto columns =
        mixes(image.width(), place.left, win32::widthOf(place), seen.left, win32::widthOf(seen));
    const auto rows =
        mixes(image.height(), place.top, win32::heightOf(place), seen.top, win32::heightOf(seen));
    const bool averages = image.width() > win32::widthOf(place) || image.height() > win32::heightOf(place);
    const auto target = picture->pixels();
    std::size_t at = 0;
    for (const Mix& row : rows)
        for (const Mix& column : columns) {
            int value = 0;
            if (averages) {
                int sum = 0;
                for (int y = row.first; y <= row.last; ++y)
                    for (int x = column.first; x <= column.last; ++x) sum += image(x, y);
                value = sum / ((row.last - row.first + 1) * (column.last - column.first + 1));
            } else {
                const auto across = [&](int y) {
                    const int first = image(column.first, y) * 256;
                    return mixesTwo(column)
                               ? first + (image(column.last, y) - image(column.first, y)) * column.shareOfLast
                               : first;
                };
                const int above = across(row.first);
                value = (mixesTwo(row) ? above + (across(row.last) - above) / 256 * row.shareOfLast : above) /
                        256;
            }
            const auto grey = static_cast<std::uint32_t>(value);
            target[at++] = 0xFF000000u | grey << 16 | grey << 8 | grey;
        }
    return picture;
}

void drawGrey(HDC dc, const engine::GreyImage& image, const RECT& place) {
    RECT clip{};
    RECT seen{};
    if (image.empty() || GetClipBox(dc, &clip) == NULLREGION || !IntersectRect(&seen, &clip, &place)) return;
    const auto picture = greyPicture(image, place, seen);
    BitBlt(dc, seen.left, seen.top, picture->width(), picture->height(), picture->dc(), 0, 0, SRCCOPY);
}

}  // namespace dravik::app
