// A network of one hidden layer while it is trained: the weights, what their descent (Adam) keeps, and one
// batch's way through both layers and back. Made for the matrix kernels, in their padded shapes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/kernels/MatrixKernels.h"

namespace dravik::engine {

struct PerceptronShape {
    std::size_t inputs = 0, hidden = 0, outputs = 0;
};

// Floats that start on a cache line, of no known value.
class AlignedFloats {
  public:
    AlignedFloats() = default;
    explicit AlignedFloats(std::size_t count);
    AlignedFloats(AlignedFloats&&) = default;
    AlignedFloats& operator=(AlignedFloats&&) = default;
    float* data() noexcept { return data_; }
    const float* data() const noexcept { return data_; }
    void clear() noexcept;
    std::size_t size() const noexcept { return count_; }

  private:
    std::unique_ptr<float[]> memory_;
    float* data_ = nullptr;
    std::size_t count_ = 0;
};

// Uniform and nearly normal numbers that are alike on every platform.
class Chance {
  public:
    explicit Chance(std::uint32_t seed) : state_(seed) {}
    std::uint32_t next();  // see Steele, Lea, Flood: "Fast splittable pseudorandom number generators" (2014)
    std::uint32_t below(std::uint32_t count) {
        return static_cast<std::uint32_t>(std::uint64_t{next()} * count >> 32);
    }
    float normal();

  private:
    std::uint64_t state_;
};

class Perceptron {
  public:
    // Samples of a batch at most.
    static constexpr std::size_t kMostRows = 120;

    // Random weights, with a bias of 0 for each unit.
    Perceptron(PerceptronShape shape, Chance& chance, const MatrixKernels& kernels = usedKernels());

    const PerceptronShape& shape() const noexcept { return shape_; }
    // Distance between the rows of inputs that learn() is given.
    std::size_t inputStride() const noexcept { return inputStride_; }

    // A batch: rows of inputs, their classes, and how far to go. Rows are readable up to the stride.
    struct Batch {
        std::span<const float* const> inputs;
        std::span<const std::uint32_t> classes;
        std::span<const float* const> noise;  // added to each row; empty for none
        float noiseFactor = 0;
        float rate = 0;
        float decay = 0;
    };
    // Returns the sum of the squares of the outputs' errors before the step.
    double learn(const Batch& batch);

    std::span<const float> weights() const noexcept { return {weights_.data(), weights_.size()}; }
    void setWeights(std::span<const float> weights);
    // Of weights as weights() gives them: inputs + 1 rows of hidden units, the last one the biases, and
    // hidden + 1 rows of outputs.
    std::span<const float> firstRow(std::span<const float> weights, std::size_t row) const;
    std::span<const float> secondRow(std::span<const float> weights, std::size_t row) const;

  private:
    double forthAndBack(const Batch& batch, std::size_t first, std::size_t last);
    void transposeSecond();

    PerceptronShape shape_;
    const MatrixKernels* kernels_;
    std::size_t inputStride_, hiddenStride_, hiddenColumns_, outputColumns_, secondPlace_;
    AlignedFloats weights_, gradient_, means_, squares_, secondTransposed_;
    AlignedFloats inputs_, hidden_, back_, outputs_;
    double meanKept_ = 1, squareKept_ = 1;
};

}  // namespace dravik::engine
