// The characters of a whole picture, part by part: what the classifier sees of them, and what it takes them
// for.
#pragma once

#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "engine/classifier/Reading.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

// A character's box in the whole picture, and its line.
struct PlacedGlyph {
    Region place;
    int line = 0;
};

// In reading order, as everything here.
std::vector<PlacedGlyph> allPlaces(const Scene& scene);

// As allInputs() of each part. `text` holds the characters of all parts.
std::vector<SampleInputs> allInputs(const Scene& scene, std::span<const std::string> text);

// As readImage() of each part.
std::vector<PlacedRecognition> readScene(const Scene& scene, const ReadingMeans& means,
                                         const std::stop_token& stop = {});

// As readWithoutFont() of each part.
std::vector<SuggestedCharacter> readWithoutFont(const Scene& scene);

// As compareWithText() of each part with its characters of the text.
std::vector<CharacterLikelihood> compareWithText(const Scene& scene, std::span<const std::string> text);

}  // namespace dravik::engine
