// What stands beside what: digits among digits, small letters after small letters. It decides between shapes
// that hardly differ, never against a clear one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/recogniser/BaseNetwork.h"

namespace dravik::engine {

// Whether what stands beside a character helps to decide what it is.
enum class Context { Used, Ignored };

// A character that one may be, and how likely that is, as a logarithm.
struct PossibleCharacter {
    std::int32_t code = 0;
    float likelihood = 0;
};

// Which of its possible characters each one of a line is, and by how much, as a logarithm, its neighbours
// make that likelier than the one which is the likeliest by itself; 0 where they are the same.
struct ChosenCharacter {
    std::size_t place = 0;
    float neighbours = 0;
};

// Those that are the likeliest together. Each character has at least one that it may be.
std::vector<ChosenCharacter> likeliestTogether(std::span<const std::vector<PossibleCharacter>> line);

// The same by the base recogniser alone: for each character its place in kRecognisedCharacters.
std::vector<std::size_t> likeliestTogether(std::span<const PatchLikelihoods> line);
// And the likeliest by itself.
std::size_t likeliestAlone(const PatchLikelihoods& one);

}  // namespace dravik::engine
