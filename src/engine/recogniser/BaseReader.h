// Reads the characters that were found in an image without any font, and tells how well they go with a text
// that they are said to be.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/recogniser/CharacterContext.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// What a character may be, and how likely that is, 0 to 1.
struct LikelyCharacter {
    std::string character;
    double likelihood = 0;
};

// A character of an image as it is read without a font.
struct SuggestedCharacter {
    Region place;  // of the image
    int line = 0;
    // The one to take first; then the others from the likeliest, none below 1 %.
    std::vector<LikelyCharacter> alternatives;
    double noCharacter = 0;  // how likely it is a half, a double or dirt, 0 to 1

    const LikelyCharacter& best() const { return alternatives.front(); }
};

// How well one found character goes with the one that it is said to be.
struct CharacterLikelihood {
    std::string expected;
    // Of the expected character and of the likeliest one, 0 to 1; characters that are not recognised without
    // a font (see RecognisedCharacters.h) have no likelihood and count as one that nothing is known of.
    double likelihood = 0;
    LikelyCharacter likeliest;
    bool isKnown = false;

    // Whether another character is so much likelier that the expected one is probably a mistake. Never
    // between those that many faces draw alike, as O and 0.
    bool disagrees() const;
};

// How much likelier than usual the found characters are whole ones, together, as a logarithm.
double wholeCharacterOdds(const Segmentation& found);
// Log odds that what was found is print and not other things on a part, which may look like text as a whole
// or in some characters; 0 where nothing was found.
double printOdds(const Segmentation& found);
// A ViewJudge: where a character is probably a half, a double or dirt, the likeliest cuts and joins are those
// that make likelier whole characters.
Wholeness takeWholeCharacters(Segmentation& found, Pieces pieces);

// The found characters in their order. Where capitals and small letters of a line are of one height, the
// height that makes its characters likelier is taken.
std::vector<SuggestedCharacter> readWithoutFont(const Segmentation& found, Context context = Context::Used);

// The found characters beside those of a text, as many as both have. Empty when they differ in number: then
// nothing tells which belong together.
std::vector<CharacterLikelihood> compareWithText(const Segmentation& found,
                                                 std::span<const std::string> text);

}  // namespace dravik::engine
