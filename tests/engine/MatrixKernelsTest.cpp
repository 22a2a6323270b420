// Every instruction set that this machine has does the same sums.
#include "engine/kernels/MatrixKernels.h"

#include "engine/classifier/Network.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

float someNumber(std::size_t i) {
    return static_cast<float>(i * 37 % 101) / 50 - 1;
}

std::vector<float> someNumbers(std::size_t count, std::size_t from) {
    std::vector<float> numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = someNumber(from + i);
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

// As a convolution sees its picture: two rows of it, places that overlap, against the same copied out.
TEST(MatrixKernels, MultiplyRowsThatLieInParts) {
    const std::size_t rows = 13, columns = 48, length = 6, step = 2, below = 40;
    const std::vector<float> picture = someNumbers(2 * below, 1), b = someNumbers(2 * length * columns, 5);
    std::vector<float> copied;
    for (std::size_t r = 0; r < rows; ++r)
        for (const std::size_t part : {std::size_t{0}, below})
            for (std::size_t i = 0; i < length; ++i) copied.push_back(picture[part + r * step + i]);
    const std::array<std::size_t, 2> parts{0, below};
    for (const MatrixKernels* kernels : availableKernels()) {
        std::vector<float> wanted(rows * columns), got(wanted);
        kernels->multiply({copied.data(), 2 * length, 1, b.data(), columns, wanted.data(), columns, rows,
                           columns, 2 * length});
        kernels->multiply({picture.data(), step, 1, b.data(), columns, got.data(), columns, rows, columns,
                           length, parts.data(), parts.size()});
        EXPECT_EQ(got, wanted) << kernels->name;
    }
}

TEST(MatrixKernels, TransposeIntoAWiderMatrix) {
    for (const MatrixKernels* kernels : availableKernels()) {
        const std::vector<float> from = someNumbers(12 * 20, 3);
        std::vector<float> to(20 * 15, 77);
        kernels->transpose(from.data(), 20, to.data(), 15, 12, 20);
        for (std::size_t r = 0; r < 12; ++r)
            for (std::size_t c = 0; c < 20; ++c) EXPECT_EQ(to[c * 15 + r], from[r * 20 + c]);
        EXPECT_EQ(to[12], 77);
    }
}

// Outputs of which the softmax, computed plainly, would be infinite or undefined are among them.
TEST(MatrixKernels, OutputErrorsAreLikelihoodsLessWhatIsWanted) {
    constexpr std::size_t classes = 74, stride = 80;
    for (const MatrixKernels* kernels : availableKernels()) {
        std::vector<float> outputs = someNumbers(4 * stride, 2);
        for (std::size_t i = 0; i < classes; ++i) outputs[stride + i] *= 25;
        for (std::size_t i = 0; i < classes; ++i) outputs[2 * stride + i] = i % 2 == 0 ? 1e30f : -1e30f;
        for (std::size_t i = 0; i < classes; ++i) outputs[3 * stride + i] = -1000;
        const std::vector<float> before = outputs;
        const std::vector<std::uint32_t> wanted = {3, 73, 0, 7};
        const float squares = kernels->outputErrors({outputs.data(), stride, 4, classes, wanted.data()});
        double all = 0;
        for (std::size_t r = 0; r < 4; ++r) {
            double sum = 0, error = 0;
            const auto power = [&before](std::size_t at) {
                return std::exp(std::clamp(static_cast<double>(before[at]), -60.0, 60.0));
            };
            for (std::size_t i = 0; i < classes; ++i) sum += power(r * stride + i);
            for (std::size_t i = 0; i < classes; ++i) {
                const double right = power(r * stride + i) / sum - (i == wanted[r] ? 1 : 0);
                EXPECT_NEAR(static_cast<double>(outputs[r * stride + i]), right, 1e-6) << kernels->name;
                error += right * right;
            }
            for (std::size_t i = classes; i < stride; ++i) EXPECT_EQ(outputs[r * stride + i], 0);
            all += error;
        }
        EXPECT_NEAR(static_cast<double>(squares), all, 1e-4) << kernels->name;
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
