#include "camera/PixelFormat.h"

#include "support/Testing.h"

namespace dravik::test {
namespace {

using camera::greyImage;

using Pixels = std::vector<int>;

Pixels pixels(std::string_view format, int width, int height, std::size_t padding, const Pixels& bytes) {
    std::vector<std::byte> raw;
    for (const int byte : bytes) raw.push_back(static_cast<std::byte>(byte));
    const engine::GreyImage image = greyImage(format, width, height, padding, raw);
    Pixels result;
    for (int y = 0; y < image.height(); ++y)
        for (const std::uint8_t pixel : image.row(y)) result.push_back(pixel);
    return result;
}

TEST(CameraPixels, EachFormatBecomesGrey) {
    EXPECT_EQ(pixels("Mono8", 2, 2, 1, {1, 2, 99, 3, 4}), (Pixels{1, 2, 3, 4}));
    EXPECT_EQ(pixels("Mono10", 2, 1, 0, {0xff, 0x03, 0x04, 0x00}), (Pixels{255, 1}));
    EXPECT_EQ(pixels("Mono12", 2, 1, 0, {0xff, 0x0f, 0xf0, 0x00}), (Pixels{255, 15}));
    EXPECT_EQ(pixels("Mono16", 1, 2, 0, {0xff, 0x80, 0, 1}), (Pixels{0x80, 1}));
    // Bits beyond the ten do not wrap round into dark pixels.
    EXPECT_EQ(pixels("Mono10", 1, 1, 0, {0xff, 0xff}), (Pixels{255}));
    EXPECT_EQ(pixels("RGB8", 3, 1, 0, {255, 0, 0, 0, 255, 0, 0, 0, 255}), (Pixels{76, 150, 29}));
    EXPECT_EQ(pixels("BGR8", 3, 1, 0, {0, 0, 255, 0, 255, 0, 255, 0, 0}), (Pixels{76, 150, 29}));
    EXPECT_EQ(pixels("BayerRG8", 2, 2, 0, {40, 80, 80, 0}), (Pixels{50, 50, 50, 50}));
    EXPECT_EQ(pixels("BayerRG8", 1, 1, 0, {9}), (Pixels{9}));
}

TEST(CameraPixels, UnknownFormatsAndTooFewBytesAreRefused) {
    EXPECT_EQ(refusal([] { pixels("Mono12Packed", 2, 1, 0, {1, 2, 3}); }), 57);
    EXPECT_EQ(refusal([] { pixels("Mono8", 2, 2, 0, {1, 2, 3}); }), 57);
    EXPECT_EQ(refusal([] { pixels("Mono16", 2, 1, 0, {1, 2, 3}); }), 57);
}

}  // namespace
}  // namespace dravik::test
