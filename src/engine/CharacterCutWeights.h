// What tells characters that touch from a wide one: a network of one hidden layer of rectified units on the
// traits of a narrow place. Fitted and printed by `tools/bench.sh evaluate fit` on generated part images.
#pragma once

#include <array>

#include "engine/CharacterCuts.h"

namespace dravik {

inline constexpr std::size_t kCutUnits = 12;

struct CutUnit {
    CutTraits weights{};
    double bias = 0;
    double share = 0;  // of the log odds
};
struct CutNetwork {
    double bias = 0;
    std::array<CutUnit, kCutUnits> units{};
};

}  // namespace dravik
