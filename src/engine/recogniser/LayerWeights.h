// Weights of a network that are part of the program: whole numbers of a byte with a scale for each output,
// behind lines of text that say where they come from.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "engine/kernels/MatrixKernels.h"

namespace dravik::engine {

// As the kernels multiply by them: a row for each input, padded columns for the outputs. They are the whole
// numbers of 7 bits that the program has; what an output's are worth is its scale.
struct LayerWeights {
    std::size_t inputs = 0, outputs = 0;
    std::vector<float> weights, scales, biases;

    std::size_t columns() const { return padded(outputs); }
};

class WeightReader {
  public:
    // The text ends with a zero byte.
    explicit WeightReader(std::span<const std::uint8_t> bytes);

    std::string_view origin() const { return origin_; }
    // The next layer: the scales of all outputs, their biases, then the weights of each output.
    LayerWeights next(std::size_t inputs, std::size_t outputs);

  private:
    std::string_view origin_;
    const std::uint8_t* from_;
};

// Rectified: nothing is below 0, and values have 17 bits. Their products with weights of 7 bits are floats
// without rounding, so that kernels that round a product before they add it and kernels that do not come to
// the same sums.
enum class Units { Rectified, Plain };

// What each row sees: from row to row `step` further, in as many parts as there are numbers in `parts`, which
// say how far they are from the first one.
struct SeenByRows {
    const float* from;
    std::size_t step;
    std::span<const std::size_t> parts;
};

// rows x columns() = rows x inputs by the layer's weights. Inputs are those of rectified units, or whole
// numbers of 8 bits.
void apply(const LayerWeights& layer, const SeenByRows& seen, float* to, std::size_t rows, Units units,
           const MatrixKernels& kernels);
// Where they lie one after the other.
void apply(const LayerWeights& layer, const float* from, float* to, std::size_t rows, Units units,
           const MatrixKernels& kernels);

}  // namespace dravik::engine
