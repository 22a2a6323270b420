// What is print in a picture, pixel by pixel. The examples come from the program that fitted the network:
// pictures of faces that it was not fitted on, and what the network said of their pixels there.
#include "engine/recogniser/InkNetwork.h"

#include <cmath>
#include <cstring>

#include "support/Testing.h"

namespace dravik::test {
namespace {

using namespace engine;

struct Example {
    GreyImage picture;
    std::vector<float> said;  // log odds
};

std::vector<Example> examples() {
    std::ifstream in(std::string(DRAVIK_SOURCE_DIR) + "/tests/engine/corpus/ink_examples.bin",
                     std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    std::vector<Example> result;
    for (std::size_t at = 0; at + 4 <= bytes.size();) {
        std::array<std::uint16_t, 2> sides{};  // height, width
        std::memcpy(sides.data(), &bytes[at], 4);
        at += 4;
        const std::size_t pixels = std::size_t{sides[0]} * sides[1];
        Example& one = result.emplace_back();
        one.picture =
            GreyImage(reinterpret_cast<const std::uint8_t*>(&bytes[at]), sides[1], sides[0], sides[1]);
        one.said.resize(pixels);
        std::memcpy(one.said.data(), &bytes[at += pixels], pixels * sizeof(float));
        at += pixels * sizeof(float);
    }
    return result;
}

std::vector<std::uint8_t> levels(const GreyImage& image) {
    std::vector<std::uint8_t> result;
    for (int y = 0; y < image.height(); ++y)
        result.insert(result.end(), image.row(y).begin(), image.row(y).end());
    return result;
}

GreyImage inverse(GreyImage image) {
    for (int y = 0; y < image.height(); ++y)
        for (std::uint8_t& level : image.row(y)) level = static_cast<std::uint8_t>(255 - level);
    return image;
}

// Weights of bytes instead of floats change the odds a little.
TEST(InkNetwork, SaysWhatItSaidWhereItWasFittedOnEveryInstructionSet) {
    const std::vector<Example> known = examples();
    ASSERT_EQ(known.size(), 6u);
    for (const Example& one : known) {
        const std::vector<std::uint8_t> best = levels(inkOf(one.picture));
        ASSERT_EQ(best.size(), one.said.size());
        double sum = 0;
        for (std::size_t i = 0; i < best.size(); ++i)
            sum += std::abs(best[i] - std::clamp(127.5 + 48 * static_cast<double>(one.said[i]), 0.0, 255.0));
        EXPECT_LT(sum / static_cast<double>(best.size()), 2);
        for (const MatrixKernels* kernels : availableKernels())
            EXPECT_EQ(levels(inkOf(one.picture, *kernels)), best) << kernels->name;
    }
    EXPECT_NE(inkNetworkOrigin().find("faces from:"), std::string_view::npos);
}

// Dark print on a light ground and light print on a dark one are alike; a shadow does not matter.
TEST(InkNetwork, PrintIsInkWhetherDarkOrLightAndInAShadow) {
    const GreyImage dark = examples().front().picture;
    GreyImage shadowed = dark;
    for (int y = 0; y < dark.height(); ++y)
        for (int x = dark.width() / 2; x < dark.width(); ++x)
            shadowed(x, y) = static_cast<std::uint8_t>(shadowed(x, y) / 2);
    const std::vector<std::uint8_t> ink = levels(inkOf(dark));
    const auto alike = [&](const GreyImage& other) {
        const std::vector<std::uint8_t> own = levels(inkOf(other));
        std::size_t both = 0, either = 0;
        for (std::size_t i = 0; i < ink.size(); ++i) {
            both += ink[i] > 127 && own[i] > 127 ? 1 : 0;
            either += ink[i] > 127 || own[i] > 127 ? 1 : 0;
        }
        return static_cast<double>(both) / static_cast<double>(std::max<std::size_t>(either, 1));
    };
    EXPECT_GT(alike(inverse(dark)), 0.85);
    EXPECT_GT(alike(shadowed), 0.85);
    for (const auto& [width, height] : {std::pair{1, 1}, {3, 9}, {17, 1}}) {
        const GreyImage tiny = inkOf(GreyImage(width, height, 90));
        EXPECT_EQ(tiny.width(), width);
        EXPECT_EQ(tiny.height(), height);
    }
    EXPECT_TRUE(inkOf({}).empty());
}

}  // namespace
}  // namespace dravik::test
