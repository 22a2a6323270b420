// The file InkWeights.bin as a part of the program; its bytes become a source when it is built.
#pragma once

#include <cstdint>
#include <span>

namespace dravik::engine {

std::span<const std::uint8_t> inkWeights();

}  // namespace dravik::engine
