#include "generate/Field.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace dravik {

using namespace engine;
namespace {

constexpr std::array<int, 64> kSteps = {
    16, 11,  10,  16, 24, 40, 51, 61, 12,  12,  14,  19,  26, 58, 60, 55,  14,  13,  16,  24, 40, 57,
    69, 56,  14,  17, 22, 29, 51, 87, 80,  62,  18,  22,  37, 56, 68, 109, 103, 77,  24,  35, 55, 64,
    81, 104, 113, 92, 49, 64, 78, 87, 103, 121, 120, 101, 72, 92, 95, 98,  112, 100, 103, 99};

// Filters `count` values that lie `step` apart with a normal curve; edges repeat.
void filter(float* values, int count, std::size_t step, const std::vector<float>& weights,
            std::vector<float>& line) {
    const int reach = static_cast<int>(weights.size()) - 1;
    line.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        line[static_cast<std::size_t>(i)] = values[static_cast<std::size_t>(i) * step];
    const auto at = [&](int i) { return line[static_cast<std::size_t>(std::clamp(i, 0, count - 1))]; };
    for (int i = 0; i < count; ++i) {
        float sum = weights[0] * at(i);
        for (int k = 1; k <= reach; ++k)
            sum += weights[static_cast<std::size_t>(k)] * (at(i - k) + at(i + k));
        values[static_cast<std::size_t>(i) * step] = sum;
    }
}

std::vector<float> normalCurve(float deviation) {
    std::vector<float> weights;
    float sum = 0;
    for (int k = 0; k <= static_cast<int>(3 * deviation + 1); ++k) {
        const float x = static_cast<float>(k) / deviation;
        weights.push_back(std::exp(-0.5f * x * x));
        sum += k ? 2 * weights.back() : weights.back();
    }
    for (float& weight : weights) weight /= sum;
    return weights;
}

}  // namespace

void Field::scaleTo(float deviation) {
    double squares = 0;
    for (const float value : values) squares += static_cast<double>(value * value);
    const double now = std::sqrt(squares / static_cast<double>(values.size()));
    for (float& value : values) value *= static_cast<float>(static_cast<double>(deviation) / (now + 1e-9));
}

void Field::smoothRows(float deviation) {
    if (deviation < 0.2f) return;
    const std::vector<float> weights = normalCurve(deviation);
    std::vector<float> line;
    for (int y = 0; y < height; ++y) filter(&at(0, y), width, 1, weights, line);
}

void Field::smoothColumns(float deviation) {
    if (deviation < 0.2f) return;
    const std::vector<float> weights = normalCurve(deviation);
    std::vector<float> line;
    for (int x = 0; x < width; ++x) filter(&at(x, 0), height, static_cast<std::size_t>(width), weights, line);
}

void Field::compress(int quality) {
    const int scale = quality < 50 ? 5000 / quality : 200 - 2 * quality;
    std::array<std::array<float, 8>, 8> cosines;
    for (std::size_t k = 0; k < 8; ++k)
        for (std::size_t i = 0; i < 8; ++i)
            cosines[k][i] = (k ? 0.5f : 0.353553f) *
                            std::cos((2 * static_cast<float>(i) + 1) * static_cast<float>(k) * 0.19634954f);
    std::array<float, 64> block, turned;
    for (int top = 0; top < height; top += 8)
        for (int left = 0; left < width; left += 8) {
            const auto pixel = [&](std::size_t i, std::size_t j) -> float& {
                return at(std::min(width - 1, left + static_cast<int>(i)),
                          std::min(height - 1, top + static_cast<int>(j)));
            };
            const auto transform = [&](bool back) {
                for (int pass = 0; pass < 2; ++pass) {
                    for (std::size_t j = 0; j < 8; ++j)
                        for (std::size_t k = 0; k < 8; ++k) {
                            float sum = 0;
                            for (std::size_t i = 0; i < 8; ++i)
                                sum += block[8 * j + i] * (back ? cosines[i][k] : cosines[k][i]);
                            turned[8 * k + j] = sum;
                        }
                    block = turned;
                }
            };
            for (std::size_t j = 0; j < 8; ++j)
                for (std::size_t i = 0; i < 8; ++i)
                    block[8 * j + i] = std::clamp(pixel(i, j), 0.0f, 255.0f) - 128;
            transform(false);
            for (std::size_t i = 0; i < 64; ++i) {
                const float step = static_cast<float>(std::clamp((kSteps[i] * scale + 50) / 100, 1, 255));
                block[i] = std::round(block[i] / step) * step;
            }
            transform(true);
            for (std::size_t j = 0; j < 8 && top + static_cast<int>(j) < height; ++j)
                for (std::size_t i = 0; i < 8 && left + static_cast<int>(i) < width; ++i)
                    pixel(i, j) = block[8 * j + i] + 128;
        }
}

GreyImage Field::image() const {
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y) {
        const float* in = &values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
        for (std::uint8_t& out : image.row(y))
            out = static_cast<std::uint8_t>(std::clamp(*in++ + 0.5f, 0.0f, 255.0f));
    }
    return image;
}

}  // namespace dravik
