#include "engine/recogniser/BoundaryNetwork.h"

#include <algorithm>
#include <array>

#include "engine/recogniser/BoundaryWeights.h"
#include "engine/recogniser/LayerWeights.h"

namespace dravik::engine {
namespace {

// Pictures of `channels` numbers a point are convolved by `across` rows of `along` places, `apart` columns
// from each other; the result has every column, and of the rows every `step`-th. Beyond the picture is
// nothing.
struct Convolution {
    std::size_t height, channels, outputs, across, along, step, apart;

    std::size_t inputs() const { return across * along * channels; }
    std::size_t heightAfter() const { return height / step; }
    // The last rows are taken together: none lie beyond them.
    std::size_t above() const { return step == across ? 0 : across / 2; }
    std::size_t beside() const { return along / 2 * apart; }
};

constexpr std::array<Convolution, 6> kConvolutions = {{{kStripHeight, 1, 12, 5, 5, 2, 1},
                                                       {12, 12, 24, 3, 5, 2, 1},
                                                       {6, 24, 32, 3, 5, 2, 1},
                                                       {3, 32, 48, 3, 5, 3, 1},
                                                       {1, 48, 48, 1, 7, 1, 2},
                                                       {1, 48, 48, 1, 7, 1, 4}}};

struct Weights {
    Weights() {
        WeightReader reader(boundaryWeights());
        origin = reader.origin();
        for (std::size_t i = 0; i < kConvolutions.size(); ++i)
            convolutions[i] = reader.next(kConvolutions[i].inputs(), kConvolutions[i].outputs);
        for (float& scale : convolutions.front().scales) scale /= 255;
        output = reader.next(kConvolutions.back().outputs, 1);
    }

    std::string_view origin;
    std::array<LayerWeights, kConvolutions.size()> convolutions;
    LayerWeights output;
};

const Weights& weights() {
    static const Weights result;
    return result;
}

// How far what a place sees is from the first of it, in a picture with rows of such a length: places side by
// side are one part.
std::vector<std::size_t> partsSeen(const Convolution& how, std::size_t length) {
    std::vector<std::size_t> parts;
    for (std::size_t y = 0; y < how.across; ++y)
        for (std::size_t i = 0; i < (how.apart == 1 ? 1 : how.along); ++i)
            parts.push_back(y * length + i * how.apart * how.channels);
    return parts;
}

}  // namespace

std::vector<float> boundaryOdds(const LineStrip& strip, const MatrixKernels& kernels) {
    if (strip.columns == 0) return {};
    const std::size_t columns = static_cast<std::size_t>(strip.columns);
    std::vector<float> last(strip.ink.begin(), strip.ink.end()), picture, results;
    std::size_t lastChannels = 1;
    for (std::size_t i = 0; i < kConvolutions.size(); ++i) {
        const Convolution& how = kConvolutions[i];
        const std::size_t length = (columns + 2 * how.beside()) * how.channels;
        picture.assign((how.height + 2 * how.above()) * length, 0);
        for (std::size_t place = 0; place < how.height * columns; ++place)
            std::copy_n(&last[place * lastChannels], how.channels,
                        &picture[(place / columns + how.above()) * length +
                                 (place % columns + how.beside()) * how.channels]);
        const LayerWeights& layer = weights().convolutions[i];
        lastChannels = layer.columns();
        last.resize(how.heightAfter() * columns * lastChannels);
        const std::vector<std::size_t> parts = partsSeen(how, length);
        for (std::size_t row = 0; row < how.heightAfter(); ++row)
            apply(layer, SeenByRows{&picture[row * how.step * length], how.channels, parts},
                  &last[row * columns * lastChannels], columns, Units::Rectified, kernels);
    }
    results.resize(columns * weights().output.columns());
    apply(weights().output, last.data(), results.data(), columns, Units::Plain, kernels);
    std::vector<float> odds(columns);
    for (std::size_t x = 0; x < columns; ++x) odds[x] = results[x * weights().output.columns()];
    return odds;
}

std::string_view boundaryNetworkOrigin() {
    return weights().origin;
}

}  // namespace dravik::engine
