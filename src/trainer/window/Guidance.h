// What the operator can do next for a font to become better, from its samples and from what its held-out
// check has found.
#pragma once

#include <string>

#include "engine/embedded/HeldOutCheck.h"
#include "engine/font/SampleStore.h"

namespace dravik::trainer {

// Fewer samples of a character do not show how it varies.
constexpr int kFewestSamples = 3;

// A line for each thing to do, "" when there is nothing: "Include 2 more parts with Q and 7, which have 1
// sample each.", "O is taken for 0: look at their samples in the gallery (Ctrl+G, read wrong in the check)."
std::string guidanceText(const engine::SampleColumns& committed, const engine::HeldOutResult& check);

}  // namespace dravik::trainer
