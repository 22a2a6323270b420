// Finds the characters of an image: size, polarity, threshold, slope, lines, characters in reading order.
#pragma once

#include <stop_token>
#include <vector>

#include "engine/image/Binarization.h"
#include "engine/image/Components.h"
#include "engine/segmentation/CharacterCuts.h"
#include "engine/segmentation/SegmentationSettings.h"
#include "engine/segmentation/TextLines.h"

namespace dravik::engine {

struct Glyph {
    Piece piece;  // measured in the segmentation's frame
    int line = 0;
};

// How the print was looked at: its polarity, the background's grain (see Binarizer::separate) and blur in
// working pixels, and what was put together.
struct Look {
    bool dark = true;
    int side = 24;
    float blur = 0;
    enum Joining { None, Fragments, Dots } joins = None;
    // Of capitals, in working pixels; 0 for any. What is much smaller is no piece of print.
    float leastHeight = 0;
};

// What else an image may show: another number of characters, which fewer looks saw or less clearly.
struct OtherView {
    Look look;
    Region region;  // of the image
    float scale = 1;
    std::size_t characters = 0;
    double odds = 0;        // logarithm, against the number that was taken
    bool isJudged = false;  // its characters are the likeliest pieces to the judge of the segmentation
};

struct Segmentation {
    Look look;
    InkImage ink;
    Frame frame;
    std::vector<LineMetrics> lines;  // from top to bottom
    std::vector<Glyph> glyphs;       // in reading order
    CharacterDecisions decisions;    // by which they were found
    double likeness = 0;             // log odds that the characters are right, as kTextLikeness tells
    std::vector<Glyph> leftOut;      // that are hardly likelier dirt than print, few
    std::vector<OtherView> others;   // the likeliest first, few

    // Where a glyph is in the image.
    Region place(const Glyph& glyph) const;
};

// How well the characters of a view look like whole ones.
struct Wholeness {
    double odds = -1e9;    // a logarithm of likelihoods; hardly anything where nothing was judged
    bool isClear = false;  // hardly one of them is a half, a double or dirt
    bool isSure = false;   // each is a whole one beyond doubt
};

// The characters of a view are judged as they were found, or may be cut and joined better first.
enum class Pieces { AsFound, Likeliest };
using ViewJudge = Wholeness (*)(Segmentation& view, Pieces pieces);

// How much is looked at: UntilClear ends as soon as one view is beyond doubt, as most are; PrintAlone does,
// of a picture whose ground is even, so that one grain will do; All is to learn from.
enum class Search { UntilClear, PrintAlone, All };

// Empty when nothing is found. Takes any image and never fails but for want of memory. Print is found in
// milliseconds; noise and textures may take seconds. Where it is in doubt what an image shows, the judge is
// asked of each view; null judges by what most views see. Ends soon, with anything or nothing found, once a
// stop is requested.
Segmentation segment(const GreyImage& image, ViewJudge judge = nullptr, const std::stop_token& stop = {},
                     const PrintSettings& print = {}, Search search = Search::UntilClear);
// The characters of another view of the same image, which was found with the same judge.
Segmentation segment(const GreyImage& image, const OtherView& view, ViewJudge judge = nullptr);

}  // namespace dravik::engine
