#include "engine/recogniser/BaseNetwork.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include "engine/recogniser/BaseWeights.h"
#include "engine/recogniser/LayerWeights.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kOutputs = kNoCharacter + 1;
// Patches that go through the network together: enough for the kernels, few enough to stay in the cache.
constexpr std::size_t kBatch = 8;

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
constexpr std::size_t kGathered = 112, kLastSide = 3, kLargest = kConvolutions.front().size;

struct Weights {
    Weights() {
        WeightReader reader(baseWeights());
        origin = reader.origin();
        for (std::size_t i = 0; i < kConvolutions.size(); ++i)
            convolutions[i] = reader.next(kConvolutions[i].inputs(), kConvolutions[i].outputs);
        for (float& scale : convolutions.front().scales) scale /= 255;
        gather = reader.next(kLastSide * kLastSide * kConvolutions.back().outputs, kGathered);
        outputs = reader.next(kGathered, kOutputs);
    }

    std::string_view origin;
    std::array<LayerWeights, kConvolutions.size()> convolutions;
    LayerWeights gather, outputs;
};

const Weights& weights() {
    static const Weights result;
    return result;
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
    std::size_t pictures = 0, results = 0;
};
constexpr Room kRoom = [] {
    Room most;
    for (const Convolution& one : kConvolutions) {
        const std::size_t places = one.sideAfter() * one.sideAfter();
        most.pictures = std::max(most.pictures, one.pictureLength());
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
          gathered_(std::make_unique_for_overwrite<float[]>(batch * weights().gather.columns())),
          results_(std::make_unique_for_overwrite<float[]>(batch * kRoom.results)) {}

    void run(std::span<const CharacterPatch> patches, PatchLikelihoods* to) {
        const std::size_t count = patches.size();
        takePatches(patches);
        for (std::size_t number = 0; number < kConvolutions.size(); ++number) convolve(number, count);
        apply(weights().gather, results_.get(), gathered_.get(), count, Units::Rectified, kernels_);
        apply(weights().outputs, gathered_.get(), results_.get(), count, Units::Plain, kernels_);
        for (std::size_t i = 0; i < count; ++i)
            likelihoods(&results_[i * weights().outputs.columns()], to[i]);
    }

  private:
    void convolve(std::size_t number, std::size_t count) {
        const Convolution& how = kConvolutions[number];
        const LayerWeights& layer = weights().convolutions[number];
        std::array<std::size_t, kLargest> parts{};
        for (std::size_t i = 0; i < how.size; ++i) parts[i] = i * how.rowLength();
        float* to = results_.get();
        for (std::size_t picture = 0; picture < count; ++picture)
            for (std::size_t y = 0; y < how.sideAfter(); ++y, to += how.sideAfter() * layer.columns())
                apply(layer,
                      SeenByRows{&pictures_[picture * how.pictureLength() + 2 * y * how.rowLength()],
                                 2 * how.channels, std::span(parts).first(how.size)},
                      to, how.sideAfter(), Units::Rectified, kernels_);
        if (number + 1 < kConvolutions.size())
            layOut(how, kConvolutions[number + 1], results_.get(), count, pictures_.get());
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
    std::unique_ptr<float[]> pictures_, gathered_, results_;
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
    return weights().origin;
}

}  // namespace dravik::engine
