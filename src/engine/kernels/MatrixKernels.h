// The loops in which training spends its time, in one version for each instruction set, chosen when the
// program runs. Every version gives the same results whenever it is given the same numbers, however a matrix
// is split between calls. All add in the same order; versions differ from each other by rounding where
// products do, which the newer ones do not round before they add them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace dravik::engine {

// Rows and columns that the kernels run over as vectors are padded to a multiple of this.
constexpr std::size_t kPadding = 16;

constexpr std::size_t padded(std::size_t count) {
    return (count + kPadding - 1) / kPadding * kPadding;
}

// The one part of what lies together.
inline constexpr std::size_t kTogether = 0;

// c = a x b. `a` has `rows` x `depth` elements, aRow apart from row to row and aColumn from column to column,
// so that a transposed matrix needs no copy. b and c are rows of `columns` elements, a multiple of kPadding.
// A row of `a` may lie in several parts of `depth` elements, which begin so far from where the first one of
// its row would: what a convolution sees needs no copy either. b has the rows of all parts.
struct MatrixProduct {
    const float* a;
    std::size_t aRow, aColumn;
    const float* b;
    std::size_t bRow;
    float* c;
    std::size_t cRow;
    std::size_t rows, columns, depth;
    const std::size_t* parts = &kTogether;
    std::size_t partCount = 1;
};

// A stretch of weights with what its descent keeps, and how far a step goes. See Kingma and Ba, "Adam: a
// method for stochastic optimization" (2015), and Loshchilov and Hutter, "Decoupled weight decay
// regularization" (2019).
struct AdamStep {
    float *weights, *means, *squares;
    const float* gradient;
    std::size_t count;  // a multiple of kPadding
    float rate, decay;
    float meanCorrection, squareCorrection;
};

// Outputs of `rows` samples, `stride` floats apart, a multiple of kPadding, to be turned into what is
// propagated back.
struct OutputErrors {
    float* outputs;
    std::size_t stride, rows;
    std::size_t classes;          // those behind, up to the stride, become 0
    const std::uint32_t* wanted;  // class of each row
};

struct MatrixKernels {
    const char* name;
    void (*multiply)(const MatrixProduct&);
    // to = from + factor x noise, `count` elements, a multiple of kPadding.
    void (*addScaled)(float* to, const float* from, const float* noise, float factor, std::size_t count);
    // Each value becomes itself or, when negative, a tenth of it. `count` is a multiple of kPadding.
    void (*activate)(float* values, std::size_t count);
    // Each slope becomes itself or, where the activated value is negative, a tenth of it.
    void (*activateBack)(float* slopes, const float* values, std::size_t count);
    // Likelihoods (softmax) less what is wanted; returns the sum of the squares.
    float (*outputErrors)(const OutputErrors&);
    void (*adam)(const AdamStep&);
    // to(column, row) = from(row, column); both counts are multiples of 4.
    void (*transpose)(const float* from, std::size_t fromRow, float* to, std::size_t toRow, std::size_t rows,
                      std::size_t columns);
};

// Those that this machine can run, the best one first. Never empty.
std::span<const MatrixKernels* const> availableKernels();
// What everything takes that is not given others: the best ones, or those available ones that the environment
// variable DRAVIK_KERNELS names, until useKernels() takes others for the whole process.
const MatrixKernels& usedKernels();
void useKernels(const MatrixKernels& kernels);

}  // namespace dravik::engine
