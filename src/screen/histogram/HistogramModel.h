// What a histogram shows, without a form: the samples of each character of the font, or the Distances of one
// character counted into bins; its bars, their names and colours, and the range that a bin stands for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "screen/histogram/HistogramDrawing.h"

namespace dravik::screen {

constexpr std::int16_t kFontHistogram = 0;
constexpr std::int16_t kCharacterDistance = 1;

// Smallest, largest and mean value; raise Subscript out of range (9) for no values.
double MinValue(std::span<const double> values);
double MaxValue(std::span<const double> values);
double AvgValue(std::span<const double> values);

constexpr int kBins = 10;

// Distances counted into bins of equal width from 0 to the largest. A bin holds what lies above its lower
// edge up to and including its upper edge; the first holds 0 too.
struct DistanceBins {
    std::array<std::int16_t, kBins> counts{};
    std::int16_t largestCount = 0;
    double width = 0;  // 0 when every Distance is 0
};

// Raises Overflow (6) when a bin takes more than 32,767 samples, Subscript out of range (9) for no Distances.
DistanceBins binDistances(std::span<const double> distances);

struct HistogramModel {
    struct Range {
        double lower = 0;
        double upper = 0;
    };

    std::int16_t mode = kFontHistogram;
    std::vector<double> data;  // samples of each character, or the Distances of one character
    std::vector<double> max;   // largest Distance of each character; font histogram only
    std::vector<std::string> chars;
    double threshold = 0;  // a largest Distance that reaches it makes a character's bar red
    DistanceBins bins;
    HistogramDrawing drawing;

    // Nothing drawn, no data; mode and threshold stay.
    void clear();

    // A bar for each character, hidden until it is placed.
    void loadCharacters();
    void placeCharacters(std::int16_t axisMaximum);
    // A bar for each bin, hidden until it is placed.
    void loadBins();
    // Raises as binDistances() does.
    void countBins() { bins = binDistances(data); }
    void placeBins();

    // Returns how many characters reach the threshold.
    int colourByThreshold();
    // Gives each visible bar the name that a screen reader says.
    void nameBars();

    Range rangeOf(std::size_t bin) const;
    // The Distances that are deleted with the bin: those of rangeOf(), and with the last bin the largest,
    // which ten widths can miss by a rounding.
    Range deletedWith(std::size_t bin) const;
    // Of a bin, of a character's bar; raise Subscript out of range (9) behind the last.
    std::int16_t countOf(std::size_t bin) const;
    double samplesOf(std::size_t character) const;
    double maxOf(std::size_t character) const;
    const std::string& nameOf(std::size_t character) const;

  private:
    std::string accessibleNameOf(std::size_t bar) const;
};

}  // namespace dravik::screen
