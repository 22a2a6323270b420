// The loops over pixels that take words, blocks and bands at a time, against the same done pixel by pixel, on
// sizes that do not fit the words, blocks and bands.

#include "engine/image/Components.h"
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

// For each pixel the number of the component that it is in, in the order of their first pixels; -1 for paper.
std::vector<int> flooded(const InkImage& image) {
    std::vector<int> owners(image.ink.size(), -1);
    int count = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            if (image.at(x, y) < 128 || owners[at(x, y, image.width)] >= 0) continue;
            std::vector<std::pair<int, int>> open = {{x, y}};
            while (!open.empty()) {
                const auto [px, py] = open.back();
                open.pop_back();
                if (px < 0 || py < 0 || px >= image.width || py >= image.height || image.at(px, py) < 128)
                    continue;
                int& owner = owners[at(px, py, image.width)];
                if (owner >= 0) continue;
                owner = count;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx) open.push_back({px + dx, py + dy});
            }
            ++count;
        }
    return owners;
}

TEST(PictureLoops, ComponentsAreWhatAFloodReaches) {
    for (const int width : {1, 7, 8, 9, 40, 65}) {
        InkImage image{width, 30, 1, 0, 0, noise(width, 30, static_cast<unsigned>(width))};
        // Less ink than paper, so that there are components of all sizes.
        for (std::uint8_t& value : image.ink) value = static_cast<std::uint8_t>(value * 7 / 10);
        std::vector<int> owners(image.ink.size(), -1);
        const std::vector<Piece> pieces = components(image, 1);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            int area = 0;
            for (const auto& run : pieces[i].runs)
                for (int x = run.x0; x < run.x1; ++x, ++area)
                    owners[at(x, run.y, width)] = static_cast<int>(i);
            EXPECT_EQ(area, pieces[i].area);
        }
        EXPECT_EQ(owners, flooded(image)) << width;
        const std::size_t large = components(image, 3).size();
        EXPECT_LT(large, pieces.size());
        EXPECT_EQ(components(image, 3, large).size(), large);
        EXPECT_TRUE(large == 0 || components(image, 3, large - 1).empty());
    }
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
