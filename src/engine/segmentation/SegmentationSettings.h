// How an operator wants the characters of an image to be looked for, where finding out by itself goes wrong:
// only in a region, by one polarity or kind of print, or by no print that is smaller than told.
#pragma once

#include <optional>
#include <string_view>

#include "engine/image/RotatedBox.h"

namespace dravik::engine {

enum class Polarity { Automatic, DarkOnLight, LightOnDark };
enum class PrintKind { Automatic, Solid, DotMatrix };

// What print may be, wherever it stands.
struct PrintSettings {
    Polarity polarity = Polarity::Automatic;
    PrintKind kind = PrintKind::Automatic;
    int smallestHeight = 0;  // of capitals and figures, in image pixels; 0 for automatic

    bool operator==(const PrintSettings&) const = default;

    bool allows(bool dark) const noexcept {
        return polarity == Polarity::Automatic || dark == (polarity == Polarity::DarkOnLight);
    }
};

// A region's sides and the smallest height are in these ranges, its place within the largest image.
constexpr float kLeastRegionSide = 4, kMostRegionSide = 65'535;
constexpr int kMostSmallestHeight = 2'000;
bool isRegion(const RotatedBox& box) noexcept;

struct SegmentationSettings {
    // All that is looked at, turned upright by its angle, which is how print at any angle, on its head or
    // upright is read; nothing for the whole image.
    std::optional<RotatedBox> region{};
    PrintSettings print{};

    bool operator==(const SegmentationSettings&) const = default;
};

// The words by which the commands and files name them: "auto", "dark" and "light"; "auto", "solid" and
// "dots". Nothing for other words.
std::optional<Polarity> polarityNamed(std::string_view word);
std::optional<PrintKind> printKindNamed(std::string_view word);
// "x,y,width,height" or "x,y,width,height,angle": the upper left corner and the sides of the region as it
// stands before it is turned around its middle by the angle, in pixels and degrees clockwise. Nothing for
// other texts and for sides out of range.
std::optional<RotatedBox> regionNamed(std::string_view text);

}  // namespace dravik::engine
