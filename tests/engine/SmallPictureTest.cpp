// The small pictures of samples: what was packed is seen again, and nothing that a file holds does harm.
#include "engine/image/SmallPicture.h"

#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

// The largest difference of a pixel that was not scaled.
int worst(const GreyImage& image) {
    const SmallPicture small = smallPicture(image, {0, 0, image.width(), image.height()});
    const GreyImage back = unpacked(small);
    EXPECT_EQ(back.width(), image.width());
    EXPECT_EQ(back.height(), image.height());
    int worst = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) worst = std::max(worst, std::abs(back(x, y) - image(x, y)));
    return worst;
}

TEST(SmallPicture, ShowsWhatWasPacked) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        GreyImage image(1 + static_cast<int>(random() % 32), 1 + static_cast<int>(random() % 32));
        const int noise = round % 3 == 0 ? 256 : 1 + static_cast<int>(random() % 40);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                image(x, y) = static_cast<std::uint8_t>(
                    (x * 9 + y * (round % 7) + (x / 6 % 2) * 150 + static_cast<int>(random()) % noise) & 255);
        ASSERT_LE(worst(image), 8) << "half a level, in round " << round;
    }
    EXPECT_EQ(worst(GreyImage(32, 32, 0)), 0);
    EXPECT_EQ(worst(GreyImage(1, 1, 255)), 0);
}

TEST(SmallPicture, IsSmallAndShowsACharacterWithItsSurroundings) {
    GreyImage large(400, 300, 220);
    for (int y = 100; y < 180; ++y)
        for (int x = 200; x < 240; ++x) large(x, y) = 30;
    const SmallPicture small = smallPicture(large, {200, 100, 240, 180});
    EXPECT_LT(small.packed.size(), 200U);
    const GreyImage seen = unpacked(small);
    EXPECT_EQ(seen.height(), 32);
    EXPECT_GT(seen(0, 0), 200);
    EXPECT_LT(seen(seen.width() / 2, 16), 40);
    EXPECT_FALSE(smallPicture(large, {395, 295, 400, 300}).empty());
    EXPECT_TRUE(smallPicture(large, {500, 10, 510, 20}).empty());
    EXPECT_TRUE(smallPicture({}, {0, 0, 5, 5}).empty());
}

TEST(SmallPicture, AnyBytesAreAPicture) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        SmallPicture any;
        any.width = static_cast<std::uint8_t>(1 + random() % 32);
        any.height = static_cast<std::uint8_t>(1 + random() % 32);
        any.packed.resize(random() % 100);
        for (std::uint8_t& byte : any.packed) byte = static_cast<std::uint8_t>(random());
        ASSERT_EQ(unpacked(any).width(), any.width);
    }
    EXPECT_TRUE(unpacked({}).empty());
}

}  // namespace
}  // namespace dravik
