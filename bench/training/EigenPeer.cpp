// Compiled for the machine that it runs on.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <Eigen/Core>
#pragma GCC diagnostic pop

#include <ctime>

#include "Peers.h"

namespace dravik {

double eigenGigaflops(std::size_t rows, std::size_t columns, std::size_t depth) {
    using Matrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    const auto size = [](std::size_t s) { return static_cast<Eigen::Index>(s); };
    const Matrix a = Matrix::Random(size(rows), size(depth)), b = Matrix::Random(size(depth), size(columns));
    Matrix c(size(rows), size(columns));
    constexpr int times = 5000;
    const std::clock_t start = std::clock();
    for (int i = 0; i < times; ++i) c.noalias() = a * b;
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return c.sum() == 0.5f ? 0 : 2e-9 * static_cast<double>(rows * columns * depth) * times / seconds;
}

}  // namespace dravik
