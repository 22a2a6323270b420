// Print seen by a camera: turned, lit unevenly, on paper with texture, scratches and frames, blurred, noisy.
#pragma once

#include <string>
#include <vector>

#include "engine/image/GreyImage.h"
#include "generate/Print.h"
#include "generate/Random.h"

namespace dravik {

using namespace engine;

// Lengths in parts of the height of capitals, grey levels 0 to 255, probabilities and shares 0 to 1.
struct View {
    bool darkPrint = true;
    float paper = 200, contrast = 120;
    float angle = 0;  // degrees, falling to the right
    float slant = 0;  // shift to the right per height
    float marginLeft = 0.7f, marginRight = 0.7f, marginTop = 0.7f, marginBottom = 0.7f;
    float gradient = 0, vignette = 0, shadow = 0, spot = 0;  // share of the light that is lost or won
    float brushed = 0, mottled = 0;                          // deviation in grey levels
    int specks = 0, scratches = 0;
    float frame = 0;                // distance of a frame around the print, 0 for none
    float surround = -1;            // grey level beyond the plate's edge, negative for none
    float blur = 0;                 // deviation
    float noise = 0;                // deviation in grey levels
    int jpeg = 0;                   // quality 1 to 100, 0 for none
    bool binary = false;            // thresholded half way
    std::vector<std::string> tags;  // what is out of the ordinary
};

struct SeenCharacter {
    PrintedCharacter printed;
    int left = 0, top = 0, right = 0, bottom = 0;  // pixels, right and bottom exclusive
    float baseline = 0;                            // at its middle
};

struct Picture {
    GreyImage image;
    GreyImage whole;  // its characters alone, whole, white on black
    std::vector<SeenCharacter> characters;
};

Picture seen(const Print& print, const View& view, Random& random);

}  // namespace dravik
