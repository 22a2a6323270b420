#include "library/Images.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>

#include "library/Boundary.h"

namespace dravik::library {

namespace {

// The part of the image that an upright region of the caller's has.
dravik_box cropped(const dravik_image& image, const dravik_settings* settings) {
    if (!settings || !settings->region) return {0, 0, image.width, image.height};
    const dravik_box& region = *settings->region;
    const dravik_box part{std::max(region.left, 0), std::max(region.top, 0),
                          std::min(region.right, image.width), std::min(region.bottom, image.height)};
    if (part.left >= part.right || part.top >= part.bottom)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "The region lies outside of the image"};
    return part;
}

engine::RotatedBox upright(const dravik_box& box) {
    const auto left = static_cast<float>(box.left), top = static_cast<float>(box.top);
    const auto width = static_cast<float>(box.right) - left, height = static_cast<float>(box.bottom) - top;
    return {left + width / 2, top + height / 2, width, height, 0};
}

}  // namespace

engine::SegmentationSettings merged(const dravik_settings* settings, engine::SegmentationSettings ofFont) {
    if (!settings) return ofFont;
    if (settings->region)
        ofFont.region = upright(*settings->region);
    else if (settings->turnedRegion || settings->wholeImage)
        ofFont.region = settings->turnedRegion;
    ofFont.print.polarity = settings->polarity.value_or(ofFont.print.polarity);
    ofFont.print.kind = settings->print.value_or(ofFont.print.kind);
    ofFont.print.smallestHeight = settings->smallestHeight.value_or(ofFont.print.smallestHeight);
    return ofFont;
}

ImagePart partToRead(const dravik_image* image, const dravik_settings* settings,
                     const engine::SegmentationSettings& ofFont) {
    checkPointer(image, "image");
    checkPointer(image->pixels, "image->pixels");
    if (image->width < 1 || image->height < 1)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "An image of " + std::to_string(image->width) + " x " +
                                               std::to_string(image->height) + " pixels is none"};
    if (image->height > 1 && std::abs(image->stride) < image->width)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "A stride of " + std::to_string(image->stride) +
                                               " bytes is less than the width of " +
                                               std::to_string(image->width) + " pixels"};
    const dravik_box part = cropped(*image, settings);
    engine::SegmentationSettings inPart = merged(settings, ofFont);
    if (settings && settings->region) inPart.region.reset();
    const std::uint8_t* first = image->pixels + part.top * image->stride + part.left;
    return {engine::GreyImage(first, part.right - part.left, part.bottom - part.top, image->stride),
            part.left, part.top, inPart};
}

}  // namespace dravik::library

using namespace dravik;
using namespace dravik::library;

namespace {

// The engine's value for one of the interface's, which are numbered from 0.
template <class Value, std::size_t N>
Value oneOf(int number, const std::array<Value, N>& values) {
    if (number < 0 || static_cast<std::size_t>(number) >= N)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "There is no setting " + std::to_string(number)};
    return values[static_cast<std::size_t>(number)];
}

}  // namespace

dravik_settings* dravik_settings_new() {
    return new (std::nothrow) dravik_settings;
}

void dravik_settings_free(dravik_settings* settings) {
    delete settings;
}

dravik_status dravik_settings_set_region(dravik_settings* settings, const dravik_box* region,
                                         dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        if (region && (region->left >= region->right || region->top >= region->bottom))
            throw Refusal{DRAVIK_BAD_ARGUMENT, "A region's right and bottom lie behind its left and top"};
        settings->clearRegion();
        if (region)
            settings->region = *region;
        else
            settings->wholeImage = true;
    });
}

dravik_status dravik_settings_set_turned_region(dravik_settings* settings, double left, double top,
                                                double width, double height, double angle,
                                                dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        const engine::RotatedBox box{static_cast<float>(left + width / 2),
                                     static_cast<float>(top + height / 2), static_cast<float>(width),
                                     static_cast<float>(height), static_cast<float>(angle)};
        if (!engine::isRegion(box))
            throw Refusal{DRAVIK_BAD_ARGUMENT,
                          "A side, the place or the angle of the region is out of range"};
        settings->clearRegion();
        settings->turnedRegion = box;
    });
}

dravik_status dravik_settings_set_polarity(dravik_settings* settings, dravik_polarity polarity,
                                           dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        settings->polarity =
            oneOf(polarity, std::array{engine::Polarity::Automatic, engine::Polarity::DarkOnLight,
                                       engine::Polarity::LightOnDark});
    });
}

dravik_status dravik_settings_set_print(dravik_settings* settings, dravik_print print, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        settings->print = oneOf(print, std::array{engine::PrintKind::Automatic, engine::PrintKind::Solid,
                                                  engine::PrintKind::DotMatrix});
    });
}

dravik_status dravik_settings_set_smallest_height(dravik_settings* settings, int32_t pixels,
                                                  dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        if (pixels < 0 || pixels > engine::kMostSmallestHeight)
            throw Refusal{DRAVIK_BAD_ARGUMENT, "The smallest height lies between 0 and 2000 pixels"};
        settings->smallestHeight = pixels;
    });
}

dravik_status dravik_settings_set_reject_limit(dravik_settings* settings, double limit, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(settings, "settings");
        if (!(limit >= 0 && limit <= 1))
            throw Refusal{DRAVIK_BAD_ARGUMENT, "A limit of confidence lies between 0 and 1"};
        settings->rejectLimit = limit;
    });
}
