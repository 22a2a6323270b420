// From the characters of an image to what the classifier sees of them, and to what it takes them for.
#pragma once

#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "engine/classifier/Confidence.h"
#include "engine/classifier/Network.h"
#include "engine/recogniser/CharacterContext.h"
#include "engine/recogniser/TextFormats.h"
#include "engine/segmentation/Features.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// Inputs of all found characters. `text` holds the characters that they are said to be, none when nothing is
// known: it decides whether characters of one height are capitals or small letters.
std::vector<SampleInputs> allInputs(const Segmentation& found, std::span<const std::string> text);

// A character that a found one may be, and what speaks for it.
struct CharacterEvidence {
    std::int32_t code = 0;
    Evidence evidence;
};

// What one found character is taken for, and what else was thought possible.
struct Recognition {
    CharacterEvidence best;
    std::vector<CharacterEvidence> others{};
};

// What is read with.
struct ReadingMeans {
    const Network& network;
    const DistanceMeasure& measure;
    Context context = Context::Used;
    const TextFormats* formats = nullptr;  // of lines of the print; a part of the context
};

// The trained characters that the found ones look most like, in their order; none when nothing was trained.
std::vector<Recognition> recognize(const Segmentation& found, const ReadingMeans& means,
                                   const std::stop_token& stop = {});

// A character of an image as the font reads it, and where it stands.
struct PlacedRecognition {
    Region place;
    int line = 0;
    Recognition read;
};

// All characters found in an image. Ends early, with some or none of them, once a stop is requested.
std::vector<PlacedRecognition> readImage(const Segmentation& found, const ReadingMeans& means,
                                         const std::stop_token& stop = {});

}  // namespace dravik::engine
