#include "engine/recogniser/InkNetwork.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "engine/recogniser/InkWeights.h"
#include "engine/recogniser/LayerWeights.h"

namespace dravik::engine {
namespace {

// Half the sides of the windows in which brightness and contrast are evened out.
constexpr std::array kWindows = {8, 24};
// What a pixel is that is as bright as those around it, how many levels a deviation has, and the least
// deviation, in grey levels, that counts as contrast.
constexpr double kMiddle = 128, kDeviation = 40, kLeastContrast = 2;
constexpr float kInputUnit = 64;
// The level of a pixel that is as likely print as not, and levels to a unit of log odds.
constexpr float kEven = 127.5f, kLevels = 48;

// Of each `step`-th place both ways a convolution sees `side` x `side` places, `apart` from each other.
struct Convolution {
    std::size_t inputs, outputs, side, step, apart;

    std::size_t seen() const { return side * side * inputs; }
    std::size_t border() const { return side / 2 * apart; }
};

enum Layer : std::size_t { Fine, Middle, Coarse, Around, Farther, MiddleAgain, FineAgain, Outputs, kLayers };
constexpr std::array<Convolution, kLayers> kConvolutions = {{{kWindows.size(), 16, 5, 2, 1},
                                                             {16, 32, 3, 2, 1},
                                                             {32, 48, 3, 2, 1},
                                                             {48, 48, 3, 1, 1},
                                                             {48, 48, 3, 1, 2},
                                                             {48 + 32, 32, 3, 1, 1},
                                                             {32 + 16, 16, 3, 1, 1},
                                                             {16, 4, 3, 1, 1}}};
// Sides of a picture must be multiples of what three halvings leave whole.
constexpr int kWhole = 8;

struct Weights {
    Weights() {
        WeightReader reader(inkWeights());
        origin = reader.origin();
        for (std::size_t i = 0; i < kLayers; ++i)
            layers[i] = reader.next(kConvolutions[i].seen(), kConvolutions[i].outputs);
        for (float& scale : layers[Fine].scales) scale /= kInputUnit;
    }

    std::string_view origin;
    std::array<LayerWeights, kLayers> layers;
};

const Weights& weights() {
    static const Weights result;
    return result;
}

// `channels` numbers for each place, row by row.
struct Plane {
    std::size_t width = 0, height = 0, channels = 0;
    std::vector<float> values;

    Plane(std::size_t w, std::size_t h, std::size_t c)
        : width(w), height(h), channels(c), values(w * h * c) {}
    float* at(std::size_t x, std::size_t y) { return &values[(y * width + x) * channels]; }
    const float* at(std::size_t x, std::size_t y) const { return &values[(y * width + x) * channels]; }
};

// What a layer sees, row by row.
struct Seen {
    std::size_t width = 0, height = 0;
    std::function<void(std::size_t row, float* to)> row;
};

Seen all(const Plane& plane) {
    return {plane.width, plane.height, [&plane](std::size_t y, float* to) {
                std::copy_n(plane.at(0, y), plane.width * plane.channels, to);
            }};
}

// The coarser plane, each place of it as two by two, before the finer one.
Seen together(const Plane& coarse, const Plane& fine) {
    return {fine.width, fine.height, [&coarse, &fine](std::size_t y, float* to) {
                for (std::size_t x = 0; x < fine.width; ++x) {
                    to = std::copy_n(coarse.at(x / 2, y / 2), coarse.channels, to);
                    to = std::copy_n(fine.at(x, y), fine.channels, to);
                }
            }};
}

// Makes the rows of a layer, from top to bottom; of what it sees it holds the rows that one of its own needs.
class Convolved {
  public:
    Convolved(Layer which, Seen seen, const MatrixKernels& kernels)
        : how_(kConvolutions[which]),
          layer_(weights().layers[which]),
          units_(which == Outputs ? Units::Plain : Units::Rectified),
          kernels_(kernels),
          seen_(std::move(seen)),
          length_((seen_.width + 2 * how_.border()) * how_.inputs),
          held_((2 * how_.border() + 1) * length_) {}

    std::size_t width() const { return seen_.width / how_.step; }
    std::size_t height() const { return seen_.height / how_.step; }
    std::size_t channels() const { return layer_.columns(); }

    // Writes the next row.
    void next(float* to) {
        const std::size_t rows = held_.size() / length_, first = made_ * how_.step;
        // Row y of what is seen is held at the place of y + border; above and below the picture is nothing.
        for (; taken_ < first + rows; ++taken_) {
            float* const row = &held_[taken_ % rows * length_];
            if (taken_ >= how_.border() && taken_ - how_.border() < seen_.height)
                seen_.row(taken_ - how_.border(), row + how_.border() * how_.inputs);
            else
                std::fill_n(row, length_, 0.0f);
        }
        parts_.clear();
        for (std::size_t i = 0; i < how_.side; ++i)
            for (std::size_t j = 0; j < (how_.apart == 1 ? 1 : how_.side); ++j)
                parts_.push_back((first + i * how_.apart) % rows * length_ + j * how_.apart * how_.inputs);
        apply(layer_, SeenByRows{held_.data(), how_.step * how_.inputs, parts_}, to, width(), units_,
              kernels_);
        ++made_;
    }

    Plane plane() && {
        Plane result(width(), height(), channels());
        for (std::size_t y = 0; y < result.height; ++y) next(result.at(0, y));
        return result;
    }

  private:
    const Convolution& how_;
    const LayerWeights& layer_;
    const Units units_;
    const MatrixKernels& kernels_;
    const Seen seen_;
    const std::size_t length_;
    std::vector<float> held_;
    std::vector<std::size_t> parts_;  // of what a place of the next row sees
    std::size_t taken_ = 0, made_ = 0;
};

// Each pixel against the brightness and the contrast around it, as whole numbers about 0, for each window.
// What is added to the picture to make its sides whole is 0.
Plane even(const GreyImage& picture) {
    const int width = picture.width(), height = picture.height();
    const auto whole = [](int length) {
        return static_cast<std::size_t>((length + kWhole - 1) / kWhole * kWhole);
    };
    Plane result(whole(width), whole(height), kWindows.size());
    for (std::size_t i = 0; i < kWindows.size(); ++i) {
        const int window = kWindows[i];
        // Of the window's rows, for each column and all before it.
        std::vector<std::int64_t> sums(static_cast<std::size_t>(width)), squares(sums);
        std::vector<std::int64_t> sumsBefore(sums.size() + 1), squaresBefore(sumsBefore);
        const auto add = [&](int y, std::int64_t sign) {
            const auto row = picture.row(y);
            for (std::size_t x = 0; x < row.size(); ++x) {
                const std::int64_t value = row[x];
                sums[x] += sign * value;
                squares[x] += sign * value * value;
            }
        };
        for (int y = 0; y < std::min(window, height); ++y) add(y, 1);
        for (int y = 0; y < height; ++y) {
            if (y + window < height) add(y + window, 1);
            if (y - window > 0) add(y - window - 1, -1);
            for (std::size_t x = 0; x < sums.size(); ++x) {
                sumsBefore[x + 1] = sumsBefore[x] + sums[x];
                squaresBefore[x + 1] = squaresBefore[x] + squares[x];
            }
            const int rows = std::min(y + window + 1, height) - std::max(y - window, 0);
            const auto row = picture.row(y);
            for (int x = 0; x < width; ++x) {
                const std::size_t left = static_cast<std::size_t>(std::max(x - window, 0)),
                                  right = static_cast<std::size_t>(std::min(x + window + 1, width));
                const std::int64_t count = rows * static_cast<std::int64_t>(right - left);
                const std::int64_t total = sumsBefore[right] - sumsBefore[left];
                const std::int64_t square = squaresBefore[right] - squaresBefore[left];
                const double deviation = std::sqrt(static_cast<double>(square * count - total * total) /
                                                   static_cast<double>(count * count)) +
                                         kLeastContrast;
                const double different =
                    static_cast<double>(row[static_cast<std::size_t>(x)] * count - total) /
                    static_cast<double>(count);
                const double level =
                    std::clamp(std::floor(kMiddle + 0.5 + kDeviation * different / deviation), 1.0, 255.0);
                result.at(static_cast<std::size_t>(x), static_cast<std::size_t>(y))[i] =
                    static_cast<float>(level - kMiddle);
            }
        }
    }
    return result;
}

}  // namespace

GreyImage inkOf(const GreyImage& picture, const MatrixKernels& kernels) {
    if (picture.empty()) return {};
    const auto convolved = [&](Layer which, Seen seen) {
        return Convolved(which, std::move(seen), kernels).plane();
    };
    const Plane fine = convolved(Fine, all(even(picture)));
    Plane last(0, 0, 0);
    {
        const Plane middle = convolved(Middle, all(fine));
        last = convolved(Coarse, all(middle));
        last = convolved(Around, all(last));
        last = convolved(Farther, all(last));
        last = convolved(MiddleAgain, together(last, middle));
    }
    // The last layers, the largest, are made as their rows are wanted.
    Convolved again(FineAgain, together(last, fine), kernels);
    Convolved outputs(
        Outputs, {again.width(), again.height(), [&](std::size_t, float* to) { again.next(to); }}, kernels);
    std::vector<float> two(outputs.width() * outputs.channels());
    GreyImage result(picture.width(), picture.height());
    for (int y = 0; y < result.height(); ++y) {
        if (y % 2 == 0) outputs.next(two.data());
        const auto row = result.row(y);
        for (std::size_t x = 0; x < row.size(); ++x) {
            const float odds = two[x / 2 * outputs.channels() + static_cast<std::size_t>(y % 2) * 2 + x % 2];
            row[x] = static_cast<std::uint8_t>(std::lround(std::clamp(kEven + kLevels * odds, 0.0f, 255.0f)));
        }
    }
    return result;
}

std::string_view inkNetworkOrigin() {
    return weights().origin;
}

}  // namespace dravik::engine
