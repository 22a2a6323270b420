// What the library keeps of a reading.
#pragma once

#include <string>
#include <vector>

#include "dravik/dravik.h"
#include "engine/font/FontReader.h"

struct dravik_reading {
    // Boxes are in the whole image.
    dravik_reading(std::vector<dravik::engine::ReadCharacter> read, double rejectLimit);

    const std::vector<dravik::engine::ReadCharacter> read;
    const double rejectLimit;
    std::string text;
    // As callers see them; the texts are those of `read`.
    std::vector<dravik_character> characters;
    std::vector<dravik_alternative> alternatives;
};
