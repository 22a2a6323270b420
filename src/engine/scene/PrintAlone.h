// Where a picture leaves its characters in doubt, they are looked for in its print alone, as the network of
// ink sees it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stop_token>

#include "engine/image/GreyImage.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// What found characters are worth, as a logarithm: how much likelier than usual they are whole ones, and how
// much they look like text.
double worthOf(const Segmentation& found);

struct PrintAlone {
    std::shared_ptr<const GreyImage> picture;  // as large as the one that was given, white on black
    Segmentation found;
    double worth = 0;     // of what was found
    bool isDark = false;  // the print is darker than its ground in the picture that was given
};

// Fewer characters may be pieces of something else in every view.
inline constexpr std::size_t kSomePrint = 3;

// What the print alone says of the number of characters.
struct SecondOpinion {
    std::optional<PrintAlone>
        likelier;           // nothing where the number that the picture itself shows is likeliest
    bool isAgreed = false;  // two views show the likeliest number
};

// Of the number of `characters` that the picture itself shows, and which are worth so much. No more views are
// looked at once two show the same number, or once one of a large picture is rather print than not. Ends
// soon, with anything or nothing found, once a stop is requested.
SecondOpinion findInPrintAlone(const GreyImage& picture, std::size_t characters, double worth,
                               const PrintSettings& print, const std::stop_token& stop);

}  // namespace dravik::engine
