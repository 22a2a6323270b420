#include "engine/classifier/Perceptron.h"

#include <algorithm>
#include <cmath>

namespace dravik::engine {
namespace {

// Samples that are taken through the layers at a time; tiles of five and of six rows fill them.
constexpr std::size_t kRowsAtATime = 30;
}  // namespace

AlignedFloats::AlignedFloats(std::size_t count)
    : memory_(std::make_unique_for_overwrite<float[]>(count + kPadding)), count_(count) {
    void* place = memory_.get();
    std::size_t space = (count + kPadding) * sizeof(float);
    data_ = static_cast<float*>(std::align(kPadding * sizeof(float), count * sizeof(float), place, space));
}

void AlignedFloats::clear() noexcept {
    std::fill_n(data_, count_, 0.0f);
}

std::uint32_t Chance::next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15u;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9u;
    z = (z ^ z >> 27) * 0x94d049bb133111ebu;
    return static_cast<std::uint32_t>(z >> 32);
}

float Chance::normal() {
    const std::uint32_t a = next(), b = next();
    const auto half = [](std::uint32_t v) { return static_cast<float>((v & 0xffff) + (v >> 16)) / 65536.0f; };
    return (half(a) + half(b) - 2.0f) * 1.7320508f;
}

Perceptron::Perceptron(PerceptronShape shape, Chance& chance, const MatrixKernels& kernels)
    : shape_(shape),
      kernels_(&kernels),
      inputStride_(padded(shape.inputs + 1)),
      hiddenStride_(padded(shape.hidden + 1)),
      hiddenColumns_(padded(shape.hidden)),
      outputColumns_(padded(shape.outputs)),
      secondPlace_((shape.inputs + 1) * hiddenColumns_) {
    // Rows up to a multiple of four, which is what is transposed at a time.
    const std::size_t count = secondPlace_ + (shape.hidden + 4) * outputColumns_;
    for (AlignedFloats* each : {&weights_, &gradient_, &means_, &squares_}) *each = AlignedFloats(count);
    secondTransposed_ = AlignedFloats(outputColumns_ * padded(shape.hidden + 4));
    inputs_ = AlignedFloats(kMostRows * inputStride_);
    hidden_ = AlignedFloats(kMostRows * hiddenStride_);
    back_ = AlignedFloats(kMostRows * hiddenColumns_);
    outputs_ = AlignedFloats(kMostRows * outputColumns_);
    for (AlignedFloats* each : {&weights_, &gradient_, &means_, &squares_, &secondTransposed_, &inputs_,
                                &hidden_, &back_, &outputs_})
        each->clear();
    const float firstSpread = std::sqrt(2.0f / static_cast<float>(shape.inputs));
    for (std::size_t i = 0; i < shape.inputs; ++i)
        for (std::size_t j = 0; j < shape.hidden; ++j)
            weights_.data()[i * hiddenColumns_ + j] = firstSpread * chance.normal();
    const float secondSpread = std::sqrt(1.0f / static_cast<float>(shape.hidden));
    for (std::size_t j = 0; j < shape.hidden; ++j)
        for (std::size_t k = 0; k < shape.outputs; ++k)
            weights_.data()[secondPlace_ + j * outputColumns_ + k] = secondSpread * chance.normal();
    transposeSecond();
}

void Perceptron::setWeights(std::span<const float> weights) {
    std::copy(weights.begin(), weights.end(), weights_.data());
    transposeSecond();
}

std::span<const float> Perceptron::firstRow(std::span<const float> weights, std::size_t row) const {
    return weights.subspan(row * hiddenColumns_, shape_.hidden);
}

std::span<const float> Perceptron::secondRow(std::span<const float> weights, std::size_t row) const {
    return weights.subspan(secondPlace_ + row * outputColumns_, shape_.outputs);
}

// The second layer once more, for the way back.
void Perceptron::transposeSecond() {
    kernels_->transpose(weights_.data() + secondPlace_, outputColumns_, secondTransposed_.data(),
                        padded(shape_.hidden + 4), (shape_.hidden + 3) / 4 * 4, outputColumns_);
}

double Perceptron::forthAndBack(const Batch& batch, std::size_t first, std::size_t last) {
    const std::size_t rows = last - first;
    float* inputs = inputs_.data() + first * inputStride_;
    float* hidden = hidden_.data() + first * hiddenStride_;
    float* outputs = outputs_.data() + first * outputColumns_;
    float* back = back_.data() + first * hiddenColumns_;
    for (std::size_t r = 0; r < rows; ++r) {
        if (batch.noise.empty())
            std::copy_n(batch.inputs[first + r], inputStride_, inputs + r * inputStride_);
        else
            kernels_->addScaled(inputs + r * inputStride_, batch.inputs[first + r], batch.noise[first + r],
                                batch.noiseFactor, inputStride_);
        inputs[r * inputStride_ + shape_.inputs] = 1;
    }
    kernels_->multiply({inputs, inputStride_, 1, weights_.data(), hiddenColumns_, hidden, hiddenStride_, rows,
                        hiddenColumns_, shape_.inputs + 1});
    for (std::size_t r = 0; r < rows; ++r) {
        kernels_->activate(hidden + r * hiddenStride_, hiddenColumns_);
        hidden[r * hiddenStride_ + shape_.hidden] = 1;
    }
    kernels_->multiply({hidden, hiddenStride_, 1, weights_.data() + secondPlace_, outputColumns_, outputs,
                        outputColumns_, rows, outputColumns_, shape_.hidden + 1});
    const float squares =
        kernels_->outputErrors({outputs, outputColumns_, rows, shape_.outputs, &batch.classes[first]});
    kernels_->multiply({outputs, outputColumns_, 1, secondTransposed_.data(), padded(shape_.hidden + 4), back,
                        hiddenColumns_, rows, hiddenColumns_, shape_.outputs});
    for (std::size_t r = 0; r < rows; ++r)
        kernels_->activateBack(back + r * hiddenColumns_, hidden + r * hiddenStride_, hiddenColumns_);
    return static_cast<double>(squares);
}

double Perceptron::learn(const Batch& batch) {
    const std::size_t rows = batch.inputs.size();
    double squares = 0;
    for (std::size_t first = 0; first < rows; first += kRowsAtATime)
        squares += forthAndBack(batch, first, std::min(rows, first + kRowsAtATime));
    kernels_->multiply({inputs_.data(), 1, inputStride_, back_.data(), hiddenColumns_, gradient_.data(),
                        hiddenColumns_, shape_.inputs + 1, hiddenColumns_, rows});
    kernels_->multiply({hidden_.data(), 1, hiddenStride_, outputs_.data(), outputColumns_,
                        gradient_.data() + secondPlace_, outputColumns_, shape_.hidden + 1, outputColumns_,
                        rows});
    meanKept_ *= 0.9;
    squareKept_ *= 0.995;
    kernels_->adam({weights_.data(), means_.data(), squares_.data(), gradient_.data(),
                    secondPlace_ + (shape_.hidden + 1) * outputColumns_, batch.rate, batch.decay,
                    static_cast<float>(1 / (1 - meanKept_)), static_cast<float>(1 / (1 - squareKept_))});
    transposeSecond();
    return squares;
}

}  // namespace dravik::engine
