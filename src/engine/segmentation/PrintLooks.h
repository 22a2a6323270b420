// Looks at an image in several ways, of which one will see its print as it is: sizes, polarities, degrees of
// blur, and ways to put broken print together.
#pragma once

#include <memory>
#include <stop_token>
#include <vector>

#include "engine/segmentation/Segmentation.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {

// The likeliest pieces of a view, and how whole they look together.
struct LikeliestPieces {
    std::vector<Glyph> glyphs;
    double odds = 0;
};

// What was found by one look.
struct Candidate {
    Look look;
    Region region;  // of the image
    float scale = 1;
    std::size_t characters = 0;
    TextTraits traits{};
    double value = 0;         // kTextLikeness of the traits
    float height = 0;         // of capitals, in image pixels
    Region print;             // the part of the image that has the characters
    std::int64_t ink = 0;     // pixels of the characters as they were found
    Wholeness whole;          // of them, if they were judged
    bool isImproved = false;  // by the judge: its characters are the likeliest pieces
    // Where they are known, but are not clear ones; that of another look that found the same.
    std::shared_ptr<const LikeliestPieces> likeliest;
    // Its pixels and pieces, which take room: held for one or two candidates, of which one will be wanted.
    std::unique_ptr<Segmentation> seen;
};

// A view whose characters look by so much less whole than another's, as a logarithm, is not the right one.
inline constexpr double kMuchLessWhole = 5;
// Whether it is small enough for the judge.
bool isWorthJudging(const Candidate& one);

// Those with characters, in the order of the looks; few or none once a stop is requested.
std::vector<Candidate> printCandidates(const GreyImage& image, Search search = Search::UntilClear,
                                       ViewJudge judge = nullptr, const std::stop_token& stop = {},
                                       const PrintSettings& print = {});

// What a look at a region finds.
Segmentation seenAgain(const GreyImage& image, const Region& region, float scale, const Look& look);

}  // namespace dravik::engine
