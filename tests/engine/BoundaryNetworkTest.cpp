// Where characters of a line end. The examples come from the program that fitted the network: lines of faces
// that it was not fitted on, and what the network said of their columns there.
#include "engine/recogniser/BoundaryNetwork.h"

#include <cmath>
#include <cstring>

#include "support/Testing.h"

namespace dravik::test {
namespace {

using namespace engine;

struct Example {
    LineStrip strip;
    std::vector<float> said;
};

std::vector<Example> examples() {
    std::ifstream in(std::string(DRAVIK_SOURCE_DIR) + "/tests/engine/corpus/boundary_examples.bin",
                     std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    std::vector<Example> result;
    for (std::size_t at = 0; at + 2 <= bytes.size();) {
        Example& one = result.emplace_back();
        std::uint16_t columns = 0;
        std::memcpy(&columns, &bytes[at], 2);
        one.strip.columns = columns;
        one.strip.ink.resize(std::size_t(columns) * kStripHeight);
        std::memcpy(one.strip.ink.data(), &bytes[at += 2], one.strip.ink.size());
        one.said.resize(columns);
        std::memcpy(one.said.data(), &bytes[at += one.strip.ink.size()], columns * sizeof(float));
        at += columns * sizeof(float);
    }
    return result;
}

double likely(float odds) {
    return 1 / (1 + std::exp(-static_cast<double>(odds)));
}

// Weights of bytes instead of floats change a likelihood by a few hundredths where it is in doubt.
TEST(BoundaryNetwork, SaysWhatItSaidWhereItWasFittedOnEveryInstructionSet) {
    const std::vector<Example> known = examples();
    ASSERT_EQ(known.size(), 12u);
    for (const MatrixKernels* kernels : availableKernels())
        for (const Example& one : known) {
            const std::vector<float> says = boundaryOdds(one.strip, *kernels), best = boundaryOdds(one.strip);
            EXPECT_EQ(says, best) << kernels->name;
            ASSERT_EQ(says.size(), one.said.size());
            double sum = 0;
            for (std::size_t i = 0; i < says.size(); ++i) {
                EXPECT_NEAR(likely(says[i]), likely(one.said[i]), 0.2) << i;
                sum += std::abs(likely(says[i]) - likely(one.said[i]));
            }
            EXPECT_LT(sum / static_cast<double>(says.size()), 0.01);
        }
    EXPECT_NE(boundaryNetworkOrigin().find("faces from:"), std::string_view::npos);
}

}  // namespace
}  // namespace dravik::test
