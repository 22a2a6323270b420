// The loops over pixels that take blocks and bands at a time, against the same done pixel by pixel, on sizes
// that do not fit the blocks and bands.

#include "engine/image/Morphology.h"
#include "engine/image/SmoothPicture.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

using Pixels = std::vector<std::uint8_t>;

Pixels noise(int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    Pixels pixels(static_cast<std::size_t>(width * height));
    for (std::uint8_t& pixel : pixels) pixel = static_cast<std::uint8_t>(random());
    return pixels;
}

std::size_t at(int x, int y, int width) {
    return static_cast<std::size_t>(y * width + x);
}

Pixels extremes(const Pixels& pixels, int width, int height, int radius, bool least) {
    Pixels result = pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int dy = -radius; dy <= radius; ++dy)
                for (int dx = -radius; dx <= radius; ++dx) {
                    const std::uint8_t other = pixels[at(std::clamp(x + dx, 0, width - 1),
                                                         std::clamp(y + dy, 0, height - 1), width)];
                    std::uint8_t& value = result[at(x, y, width)];
                    value = least ? std::min(value, other) : std::max(value, other);
                }
    return result;
}

TEST(PictureLoops, ClosingIsTheLeastOfTheGreatest) {
    for (const auto& [width, height] : {std::pair{5, 5}, {23, 41}, {131, 17}})
        for (const int side : {3, 7, 11, 61}) {
            Pixels pixels = noise(width, height, static_cast<unsigned>(side));
            const Pixels wanted =
                extremes(extremes(pixels, width, height, side / 2, false), width, height, side / 2, true);
            closeNarrow(pixels, width, height, side);
            EXPECT_EQ(pixels, wanted) << width << " x " << height << ", " << side;
        }
}

TEST(PictureLoops, PictureThatIsNotHeldIsTheSame) {
    for (const int height : {5, 16, 47, 300})
        for (const int passes : {1, 2, 3}) {
            const int width = 21;
            const Pixels pixels = noise(width, height, 5);
            const auto rowsFrom = [&](int first) { return rowsOf(&pixels[at(0, first, width)], width); };
            const SmoothPicture held(pixels, width, height, passes), made(rowsFrom, width, height, passes);
            // In no order, so that bands go and come again.
            for (int i = 0; i < 3 * height; ++i) {
                const int y = i * 37 % height, x = i % width;
                ASSERT_EQ(held.at(x, y), made.at(x, y)) << x << ", " << y << " of " << height;
            }
            const RowSource heldRows = held.rows(), madeRows = made.rows();
            for (int y = 0; y < height; ++y) {
                const std::uint8_t *a = heldRows(), *b = madeRows();
                ASSERT_TRUE(std::equal(a, a + width, b)) << y << " of " << height;
            }
        }
}

}  // namespace
}  // namespace dravik
