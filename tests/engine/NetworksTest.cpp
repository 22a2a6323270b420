// What the networks that find and read without a font say. The examples come from the programs that fitted
// them: faces that they were not fitted on, and what they said there. Weights of bytes instead of floats
// change that a little.
#include <numeric>

#include "engine/recogniser/BaseReader.h"
#include "engine/recogniser/BoundaryNetwork.h"
#include "engine/recogniser/InkNetwork.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

using namespace engine;

// A file of examples, from its beginning to its end.
class Examples {
  public:
    explicit Examples(const std::string& name)
        : in_(DRAVIK_SOURCE_DIR "/tests/engine/corpus/" + name + "_examples.bin", std::ios::binary) {}

    bool areLeft() { return in_.peek() != std::ifstream::traits_type::eof(); }
    template <class Value>
    std::vector<Value> take(std::size_t count) {
        std::vector<Value> values(count);
        in_.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(count * sizeof(Value)));
        return values;
    }

  private:
    std::ifstream in_;
};

double mean(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

TEST(BaseNetwork, SaysWhatItSaidWhereItWasFitted) {
    std::vector<CharacterPatch> patches;
    std::vector<PatchLikelihoods> said;
    for (Examples examples("recogniser"); examples.areLeft();) {
        patches.push_back(examples.take<CharacterPatch>(1).front());
        said.push_back(examples.take<PatchLikelihoods>(1).front());
    }
    ASSERT_GE(said.size(), 40u);
    const std::vector<PatchLikelihoods> says = patchLikelihoods(patches);
    std::vector<double> furthest;
    for (std::size_t i = 0; i < said.size(); ++i) {
        double most = 0, whole = 0;
        for (std::size_t k = 0; k < said[i].size(); ++k) {
            const double likely = std::exp(static_cast<double>(says[i][k]));
            most = std::max(most, std::abs(likely - std::exp(static_cast<double>(said[i][k]))));
            whole += likely;
        }
        EXPECT_LT(most, 0.1) << i;
        EXPECT_NEAR(whole, 1, 1e-4) << i;
        furthest.push_back(most);
        EXPECT_EQ(patchLikelihoods(std::span(patches).subspan(i, 1)).front(), says[i])
            << "however many go together";
    }
    EXPECT_LT(mean(furthest), 0.01);
}

TEST(InkNetwork, SaysWhatItSaidWhereItWasFitted) {
    std::size_t pictures = 0;
    for (Examples examples("ink"); examples.areLeft(); ++pictures) {
        const auto sides = examples.take<std::uint16_t>(2);  // height, width
        const std::size_t pixels = std::size_t{sides[0]} * sides[1];
        const auto levels = examples.take<std::uint8_t>(pixels);
        const auto odds = examples.take<float>(pixels);
        const GreyImage ink = inkOf(GreyImage(levels.data(), sides[1], sides[0], sides[1]));
        std::vector<double> off;
        for (std::size_t i = 0; i < pixels; ++i)
            off.push_back(std::abs(ink.row(static_cast<int>(i / sides[1]))[i % sides[1]] -
                                   std::clamp(127.5 + 48 * static_cast<double>(odds[i]), 0.0, 255.0)));
        EXPECT_LT(mean(off), 2);
    }
    EXPECT_EQ(pictures, 6u);
    for (const auto& [width, height] : {std::pair{0, 0}, {1, 1}, {3, 9}, {17, 1}})
        EXPECT_EQ(inkOf(GreyImage(width, height, 90)).width(), width);
}

TEST(BoundaryNetwork, SaysWhatItSaidWhereItWasFitted) {
    const auto likely = [](float odds) { return 1 / (1 + std::exp(-static_cast<double>(odds))); };
    std::size_t lines = 0;
    for (Examples examples("boundary"); examples.areLeft(); ++lines) {
        const std::size_t columns = examples.take<std::uint16_t>(1).front();
        LineStrip strip;
        strip.columns = static_cast<int>(columns);
        strip.ink = examples.take<std::uint8_t>(columns * kStripHeight);
        const auto said = examples.take<float>(columns);
        const std::vector<float> says = boundaryOdds(strip);
        ASSERT_EQ(says.size(), columns);
        std::vector<double> off;
        for (std::size_t i = 0; i < columns; ++i) off.push_back(std::abs(likely(says[i]) - likely(said[i])));
        EXPECT_LT(*std::max_element(off.begin(), off.end()), 0.2);
        EXPECT_LT(mean(off), 0.01);
    }
    EXPECT_EQ(lines, 12u);
}

}  // namespace
}  // namespace dravik::test
