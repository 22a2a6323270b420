// What stands beside what: digits among digits, small letters after small letters. It decides between shapes
// that hardly differ, never against a clear one.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/recogniser/BaseNetwork.h"

namespace dravik::engine {

// For each character of a line its place in kRecognisedCharacters: the likeliest by itself, or those that are
// the likeliest together.
std::vector<std::size_t> likeliestAlone(std::span<const PatchLikelihoods> line);
std::vector<std::size_t> likeliestTogether(std::span<const PatchLikelihoods> line);

}  // namespace dravik::engine
