// The faces that part images are printed with: outlines, pen strokes and dot patterns.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "generate/Print.h"
#include "generate/Random.h"

namespace dravik {

// How a text is printed, in parts of the height of capitals unless said otherwise.
struct PrintStyle {
    float capHeight = 40;    // pixels
    float tracking = 0;      // further space after each character
    float pairTouching = 0;  // probability that a character is moved against the one before
    float lineStep = 1.7f;   // from baseline to baseline
    float pen = 0.12f;       // width of a stroke where the face is made of strokes
    float dot = 0.9f;        // a dot's diameter as a part of the pitch
    float dotStretch = 1;    // pitch along the line as a part of that across it
    float dotJitter = 0;     // deviation of a dot's place as a part of the pitch
    float dotMissing = 0;    // probability
    float dotFade = 0;       // greatest loss of a dot's ink
    float wander = 0;        // deviation of a character's height over the line
    float cell = 0;          // when not 0, each character stands in a cell of this width
};

// A character's marks in its own units: x to the right from its left edge, y upwards from the baseline.
struct PenStroke {
    float x0, y0, x1, y1;
};

class Typeface {
  public:
    virtual ~Typeface() = default;
    virtual bool isDotMatrix() const { return false; }
    virtual bool has(char character) const = 0;
    // Prints lines of text; blanks leave a place free. The canvas fits the print with a little room.
    Print print(const std::vector<std::string>& lines, const PrintStyle& style, Random& random) const;

  protected:
    // How far the next character stands from this one, and how wide its ink is from where to where, in
    // pixels.
    struct Extent {
        float advance = 0, left = 0, right = 0;
    };
    virtual Extent extent(char character, const PrintStyle& style) const = 0;
    // Draws the character with its origin on the baseline at (x, y).
    virtual void draw(Print& print, char character, float x, float y, const PrintStyle& style, int owner,
                      Random& random) const = 0;
};

// From a scalable or bitmap font file below the system's font folder, by the file's name. Bitmap fonts are
// printed as dots. Raises std::runtime_error when the file is not there.
std::unique_ptr<Typeface> faceFromFile(const std::string& fileName);
// Dots in so many rows to a capital that show the outlines of a font file. Raises std::runtime_error when the
// file is not there or has no such size.
std::unique_ptr<Typeface> faceOfDots(const std::string& fileName, int rows);
// From a file of single strokes (.jhf), by its name.
std::unique_ptr<Typeface> faceOfStrokes(const std::string& fileName);
// Five dots wide and seven high, our own.
std::unique_ptr<Typeface> smallDotFace();

}  // namespace dravik
