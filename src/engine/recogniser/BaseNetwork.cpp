#include "engine/recogniser/BaseNetwork.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

#include "engine/recogniser/BaseWeights.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kOutputs = kNoCharacter + 1;
// Patches that go through the network together: enough for the kernels, few enough to stay in the cache.
constexpr std::size_t kBatch = 8;

// Weights as the kernels multiply by them: a row for each input, padded columns for the outputs. They are the
// whole numbers of 7 bits that the program has; what an output's are worth is its scale.
struct Layer {
    std::size_t inputs = 0, outputs = 0;
    std::vector<float> weights, scales, biases;

    std::size_t columns() const { return padded(outputs); }
};

// Pictures of `channels` numbers a point are convolved by a square of `size` points, every second place,
// beyond whose border is nothing.
struct Convolution {
    std::size_t side, channels, outputs, size;

    constexpr std::size_t inputs() const { return size * size * channels; }
    constexpr std::size_t border() const { return size / 2; }
    constexpr std::size_t sideAfter() const { return side / 2; }
    // Of a picture with its border.
    constexpr std::size_t rowLength() const { return (side + 2 * border()) * channels; }
    constexpr std::size_t pictureLength() const { return (side + 2 * border()) * rowLength(); }
};

constexpr std::array<Convolution, 3> kConvolutions = {
    {{kPatchSide, 2, 16, 5}, {12, 16, 32, 3}, {6, 32, 64, 3}}};
constexpr std::size_t kGathered = 112, kLastSide = 3;

class Weights {
  public:
    Weights() {
        const std::span<const std::uint8_t> bytes = baseWeights();
        const auto head = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
        origin_ = {reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::size_t>(head - bytes.begin())};
        const std::uint8_t* from = &*head + 1;
        for (std::size_t i = 0; i < kConvolutions.size(); ++i)
            convolutions[i] = read(from, kConvolutions[i].inputs(), kConvolutions[i].outputs);
        for (float& scale : convolutions.front().scales) scale /= 255;
        gather = read(from, kLastSide * kLastSide * kConvolutions.back().outputs, kGathered);
        outputs = read(from, kGathered, kOutputs);
    }

    std::string_view origin() const { return origin_; }

    std::array<Layer, kConvolutions.size()> convolutions;
    Layer gather, outputs;

  private:
    static Layer read(const std::uint8_t*& from, std::size_t inputs, std::size_t outputs) {
        Layer layer{inputs, outputs, {}, {}, {}};
        layer.weights.resize(inputs * layer.columns());
        layer.scales.resize(layer.columns());
        layer.biases.resize(layer.columns());
        std::memcpy(layer.scales.data(), from, outputs * sizeof(float));
        from += outputs * sizeof(float);
        std::memcpy(layer.biases.data(), from, outputs * sizeof(float));
        from += outputs * sizeof(float);
        for (std::size_t output = 0; output < outputs; ++output)
            for (std::size_t input = 0; input < inputs; ++input)
                layer.weights[input * layer.columns() + output] =
                    static_cast<float>(static_cast<std::int8_t>(*from++));
        return layer;
    }

    std::string_view origin_;
};

const Weights& weights() {
    static const Weights result;
    return result;
}

enum class Units { Rectified, Plain };

// The value in 17 bits. Its product with a weight of 7 bits is then a float without rounding, so that kernels
// that round a product before they add it and kernels that do not come to the same sums.
float inFewerBits(float value) {
    constexpr std::uint32_t kDropped = 0x7f;
    return std::bit_cast<float>((std::bit_cast<std::uint32_t>(value) + kDropped / 2 + 1) & ~kDropped);
}

// From the products' sums to what the units pass on.
void finish(const Layer& layer, float* to, std::size_t rows, Units units) {
    const std::size_t columns = layer.columns();
    const float *const scales = layer.scales.data(), *const biases = layer.biases.data();
    for (std::size_t row = 0; row < rows; ++row, to += columns)
        if (units == Units::Rectified)
            for (std::size_t i = 0; i < columns; ++i)
                to[i] = inFewerBits(std::max(0.0f, to[i] * scales[i] + biases[i]));
        else
            for (std::size_t i = 0; i < columns; ++i) to[i] = to[i] * scales[i] + biases[i];
}

// rows x outputs = rows x inputs by the layer's weights.
void apply(const Layer& layer, const float* from, float* to, std::size_t rows, Units units,
           const MatrixKernels& kernels) {
    const std::size_t columns = layer.columns();
    kernels.multiply(
        {from, layer.inputs, 1, layer.weights.data(), columns, to, columns, rows, columns, layer.inputs});
    finish(layer, to, rows, units);
}

// What each place of the result of a convolution sees, one row each; by its number, so that what is copied at
// a time is of a known length. `pictures` have their borders.
template <std::size_t Number>
void gatherPlaces(const float* pictures, std::size_t count, float* rows) {
    constexpr Convolution how = kConvolutions[Number];
    constexpr std::size_t length = how.size * how.channels;
    for (std::size_t picture = 0; picture < count; ++picture, pictures += how.pictureLength())
        for (std::size_t y = 0; y < how.sideAfter(); ++y)
            for (std::size_t x = 0; x < how.sideAfter(); ++x) {
                const float* from = pictures + 2 * y * how.rowLength() + 2 * x * how.channels;
                for (std::size_t row = 0; row < how.size; ++row, from += how.rowLength(), rows += length)
                    std::memcpy(rows, from, length * sizeof(float));
            }
}

// The result of one convolution laid out for the next one, with a border of nothing; without a next one as it
// is.
void layOut(const Convolution& done, const Convolution& next, const float* results, std::size_t count,
            float* pictures) {
    std::fill_n(pictures, count * next.pictureLength(), 0.0f);
    const std::size_t length = done.sideAfter() * done.outputs;
    for (std::size_t picture = 0; picture < count; ++picture, pictures += next.pictureLength())
        for (std::size_t y = 0; y < done.sideAfter(); ++y, results += length)
            std::copy_n(results, length,
                        pictures + (y + next.border()) * next.rowLength() + next.border() * next.channels);
}

// Numbers that a patch takes on its way, at most.
struct Room {
    std::size_t pictures = 0, rows = 0, results = 0;
};
constexpr Room kRoom = [] {
    Room most;
    for (const Convolution& one : kConvolutions) {
        const std::size_t places = one.sideAfter() * one.sideAfter();
        most.pictures = std::max(most.pictures, one.pictureLength());
        most.rows = std::max(most.rows, places * one.inputs());
        most.results = std::max(most.results, places * padded(one.outputs));
    }
    return most;
}();

class Passage {
  public:
    // For batches of so many patches at most.
    Passage(const MatrixKernels& kernels, std::size_t batch)
        : kernels_(kernels),
          pictures_(std::make_unique_for_overwrite<float[]>(batch * kRoom.pictures)),
          rows_(std::make_unique_for_overwrite<float[]>(batch * kRoom.rows)),
          results_(std::make_unique_for_overwrite<float[]>(batch * kRoom.results)) {}

    void run(std::span<const CharacterPatch> patches, PatchLikelihoods* to) {
        const std::size_t count = patches.size();
        takePatches(patches);
        convolve<0>(count);
        convolve<1>(count);
        convolve<2>(count);
        apply(weights().gather, results_.get(), rows_.get(), count, Units::Rectified, kernels_);
        apply(weights().outputs, rows_.get(), results_.get(), count, Units::Plain, kernels_);
        for (std::size_t i = 0; i < count; ++i)
            likelihoods(&results_[i * weights().outputs.columns()], to[i]);
    }

  private:
    template <std::size_t Number>
    void convolve(std::size_t count) {
        constexpr Convolution how = kConvolutions[Number];
        gatherPlaces<Number>(pictures_.get(), count, rows_.get());
        apply(weights().convolutions[Number], rows_.get(), results_.get(),
              count * how.sideAfter() * how.sideAfter(), Units::Rectified, kernels_);
        if constexpr (Number + 1 < kConvolutions.size())
            layOut(how, kConvolutions[Number + 1], results_.get(), count, pictures_.get());
    }

    void takePatches(std::span<const CharacterPatch> patches) {
        const Convolution& how = kConvolutions.front();
        std::fill_n(pictures_.get(), patches.size() * how.pictureLength(), 0.0f);
        float* picture = pictures_.get();
        for (const CharacterPatch& patch : patches) {
            for (std::size_t y = 0; y < how.side; ++y) {
                float* row = picture + (y + how.border()) * how.rowLength() + how.border() * how.channels;
                for (std::size_t x = 0; x < how.side; ++x) {
                    row[2 * x] = static_cast<float>(patch.own[y * how.side + x]);
                    row[2 * x + 1] = static_cast<float>(patch.others[y * how.side + x]);
                }
            }
            picture += how.pictureLength();
        }
    }

    static void likelihoods(const float* outputs, PatchLikelihoods& to) {
        const float most = *std::max_element(outputs, outputs + kOutputs);
        float sum = 0;
        for (std::size_t i = 0; i < kOutputs; ++i) sum += std::exp(outputs[i] - most);
        const float whole = most + std::log(sum);
        for (std::size_t i = 0; i < kOutputs; ++i) to[i] = outputs[i] - whole;
    }

    const MatrixKernels& kernels_;
    std::unique_ptr<float[]> pictures_, rows_, results_;
};

}  // namespace

std::vector<PatchLikelihoods> patchLikelihoods(std::span<const CharacterPatch> patches,
                                               const MatrixKernels& kernels) {
    std::vector<PatchLikelihoods> result(patches.size());
    Passage passage(kernels, std::min(kBatch, patches.size()));
    for (std::size_t from = 0; from < patches.size(); from += kBatch)
        passage.run(patches.subspan(from, std::min(kBatch, patches.size() - from)), &result[from]);
    return result;
}

std::vector<PatchLikelihoods> lineLikelihoods(const Segmentation& found, std::size_t from, std::size_t to,
                                              const LineMetrics& line) {
    std::vector<CharacterPatch> patches;
    patches.reserve(to - from);
    for (std::size_t i = from; i < to; ++i)
        patches.push_back(characterPatch(found.ink, found.frame, found.glyphs[i].piece, line));
    return patchLikelihoods(patches);
}

std::string_view baseNetworkOrigin() {
    return weights().origin();
}

}  // namespace dravik::engine
