// Every instruction set that this machine has does the same sums.
#include "engine/kernels/MatrixKernels.h"

#include "engine/classifier/Network.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

std::vector<float> someNumbers(std::size_t count, std::size_t from) {
    std::vector<float> numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = static_cast<float>((from + i) * 37 % 101) / 50 - 1;
    return numbers;
}

// Run once more by ctest with a name in the environment.
TEST(MatrixKernels, TheBestAreUsedUnlessTheEnvironmentNamesOthers) {
    const char* name = std::getenv("DRAVIK_KERNELS");
    EXPECT_STREQ(usedKernels().name, name ? name : availableKernels().front()->name);
}

// Row and column counts around the sizes of tiles, the left matrix lying and standing. What lies beside the
// result must stay, and a result must not depend on which other rows are computed with it.
TEST(MatrixKernels, MultiplyMatricesOfEverySize) {
    for (const MatrixKernels* kernels : availableKernels())
        for (const std::size_t columns : {16u, 48u, 64u, 80u, 96u, 112u})
            for (std::size_t rows = 1; rows <= 14; ++rows)
                for (const std::size_t depth : {1u, 7u, 50u})
                    for (const bool standing : {false, true}) {
                        const std::size_t aRow = standing ? 1 : depth + 3, aColumn = standing ? rows + 3 : 1;
                        const std::vector<float> a = someNumbers((rows + 3) * (depth + 3), 1);
                        const std::vector<float> b = someNumbers(depth * columns, 5);
                        std::vector<float> c((rows + 1) * (columns + 16), 77);
                        kernels->multiply({a.data(), aRow, aColumn, b.data(), columns, c.data(), columns + 16,
                                           rows, columns, depth});
                        std::vector<float> last(columns);
                        kernels->multiply({&a[(rows - 1) * aRow], aRow, aColumn, b.data(), columns,
                                           last.data(), columns, 1, columns, depth});
                        double worst = 0;
                        bool alike = true;
                        for (std::size_t r = 0; r < rows; ++r)
                            for (std::size_t k = 0; k < columns; ++k) {
                                double sum = 0;
                                for (std::size_t d = 0; d < depth; ++d)
                                    sum += static_cast<double>(a[r * aRow + d * aColumn]) *
                                           static_cast<double>(b[d * columns + k]);
                                const float got = c[r * (columns + 16) + k];
                                worst = std::max(worst, std::abs(sum - static_cast<double>(got)));
                                if (r + 1 == rows) alike = alike && got == last[k];
                            }
                        EXPECT_TRUE(alike) << kernels->name << " " << rows << " x " << columns;
                        EXPECT_LT(worst, 1e-5) << kernels->name << " " << rows << " x " << columns;
                        EXPECT_EQ(c[rows * (columns + 16)], 77) << kernels->name;
                        EXPECT_EQ(c[columns], 77) << kernels->name;
                    }
}

// Samples that no image gives, from a font file that someone made.
TEST(MatrixKernels, TrainingStaysFiniteWhateverTheSamplesHold) {
    TrainingSet set;
    set.codes = {'A', 'B', 'C'};
    constexpr float most = std::numeric_limits<float>::max();
    for (const float odd : {0.0f, 1.0f, most, -most, 1e-40f, 1e20f, 0.5f}) {
        set.inputs.insert(set.inputs.end(), kInputCount - 2, 0.5f);
        set.inputs.insert(set.inputs.end(), {odd, odd});
        set.classes.push_back(static_cast<std::uint32_t>(set.classes.size() % 3));
    }
    for (const MatrixKernels* kernels : availableKernels()) {
        TrainingPlan plan = TrainingPlan::forSamples(set.size());
        plan.kernels = kernels;
        TrainingFigures figures;
        const Network net = trained(
            set, 1, plan, [](const TrainingFigures&) { return true; }, figures);
        EXPECT_TRUE(std::isfinite(figures.rmsError)) << kernels->name;
        std::vector<float> outputs(3);
        for (std::size_t i = 0; i < set.size(); ++i) {
            net.run(std::span(set.inputs).subspan(i * kInputCount, kInputCount), outputs);
            EXPECT_NEAR(outputs[0] + outputs[1] + outputs[2], 1, 1e-4) << kernels->name;
        }
        for (const std::vector<float>* part : {&net.means, &net.scales, &net.first, &net.second})
            for (const float value : *part) EXPECT_TRUE(std::isfinite(value)) << kernels->name;
    }
}

}  // namespace
}  // namespace dravik
