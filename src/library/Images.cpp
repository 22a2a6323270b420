#include "library/Images.h"

#include <algorithm>
#include <new>
#include <string>

#include "library/Boundary.h"

namespace dravik::library {

ImagePart partToRead(const dravik_image* image, const dravik_settings* settings) {
    checkPointer(image, "image");
    checkPointer(image->pixels, "image->pixels");
    if (image->width < 1 || image->height < 1)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "An image of " + std::to_string(image->width) + " x " +
                                               std::to_string(image->height) + " pixels is none"};
    if (image->height > 1 && std::abs(image->stride) < image->width)
        throw Refusal{DRAVIK_BAD_ARGUMENT, "A stride of " + std::to_string(image->stride) +
                                               " bytes is less than the width of " +
                                               std::to_string(image->width) + " pixels"};
    dravik_box part{0, 0, image->width, image->height};
    if (settings && settings->region) {
        const dravik_box& region = *settings->region;
        part = {std::max(region.left, 0), std::max(region.top, 0), std::min(region.right, image->width),
                std::min(region.bottom, image->height)};
        if (part.left >= part.right || part.top >= part.bottom)
            throw Refusal{DRAVIK_BAD_ARGUMENT, "The region lies outside of the image"};
    }
    const std::uint8_t* first = image->pixels + part.top * image->stride + part.left;
    return {engine::GreyImage(first, part.right - part.left, part.bottom - part.top, image->stride),
            part.left, part.top};
}

}  // namespace dravik::library

using namespace dravik::library;

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
        settings->region = region ? std::optional(*region) : std::nullopt;
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
