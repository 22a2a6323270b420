// The base recogniser: a convolutional network, fitted on hundreds of faces, that tells what a patch shows
// without any font. Its weights are part of the program; tools/fit.sh makes them.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "engine/kernels/MatrixKernels.h"
#include "engine/recogniser/CharacterPatch.h"
#include "engine/recogniser/RecognisedCharacters.h"

namespace dravik::engine {

// Natural logarithms of the likelihoods of kRecognisedCharacters, then of none of them: a half, a double,
// dirt. Together the likelihoods are 1.
inline constexpr std::size_t kNoCharacter = kRecognisedCharacters.size();
using PatchLikelihoods = std::array<float, kRecognisedCharacters.size() + 1>;

// Of each patch, in their order. May be called by many threads at once. The same to the last bit by
// all kernels.
std::vector<PatchLikelihoods> patchLikelihoods(std::span<const CharacterPatch> patches,
                                               const MatrixKernels& kernels = usedKernels());

// Of the found characters `from` to `to` - 1, all of one line, which is believed to be where `line` says.
std::vector<PatchLikelihoods> lineLikelihoods(const Segmentation& found, std::size_t from, std::size_t to,
                                              const LineMetrics& line);

// Where the weights come from: inputs, faces with the versions of their packages, seeds, counts, scores.
std::string_view baseNetworkOrigin();

}  // namespace dravik::engine
