#include "engine/recogniser/LayerWeights.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace dravik::engine {
namespace {

float inFewerBits(float value) {
    constexpr std::uint32_t kDropped = 0x7f;
    return std::bit_cast<float>((std::bit_cast<std::uint32_t>(value) + kDropped / 2 + 1) & ~kDropped);
}

}  // namespace

WeightReader::WeightReader(std::span<const std::uint8_t> bytes) {
    const auto head = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
    origin_ = {reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(head - bytes.begin())};
    from_ = &*head + 1;
}

LayerWeights WeightReader::next(std::size_t inputs, std::size_t outputs) {
    LayerWeights layer{inputs, outputs, {}, {}, {}};
    layer.weights.resize(inputs * layer.columns());
    layer.scales.resize(layer.columns());
    layer.biases.resize(layer.columns());
    std::memcpy(layer.scales.data(), from_, outputs * sizeof(float));
    from_ += outputs * sizeof(float);
    std::memcpy(layer.biases.data(), from_, outputs * sizeof(float));
    from_ += outputs * sizeof(float);
    for (std::size_t output = 0; output < outputs; ++output)
        for (std::size_t input = 0; input < inputs; ++input)
            layer.weights[input * layer.columns() + output] =
                static_cast<float>(static_cast<std::int8_t>(*from_++));
    return layer;
}

void apply(const LayerWeights& layer, const float* from, float* to, std::size_t rows, Units units,
           const MatrixKernels& kernels) {
    apply(layer, {from, layer.inputs, {&kTogether, 1}}, to, rows, units, kernels);
}

void apply(const LayerWeights& layer, const SeenByRows& seen, float* to, std::size_t rows, Units units,
           const MatrixKernels& kernels) {
    const std::size_t columns = layer.columns(), parts = seen.parts.size();
    kernels.multiply({seen.from, seen.step, 1, layer.weights.data(), columns, to, columns, rows, columns,
                      layer.inputs / parts, seen.parts.data(), parts});
    const float *const scales = layer.scales.data(), *const biases = layer.biases.data();
    for (std::size_t row = 0; row < rows; ++row, to += columns)
        if (units == Units::Rectified)
            for (std::size_t i = 0; i < columns; ++i)
                to[i] = inFewerBits(std::max(0.0f, to[i] * scales[i] + biases[i]));
        else
            for (std::size_t i = 0; i < columns; ++i) to[i] = to[i] * scales[i] + biases[i];
}

}  // namespace dravik::engine
