// Image files of every usual kind as grey images.
#include <wincodec.h>

#include "drivers/win32/ImageFile.h"
#include "support/Testing.h"
#include "windows/app/GreyPicture.h"
#include "windows/com/WicImage.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace app;
using namespace com;
using namespace win32;
namespace {

class ImageDecoding : public testing::Test {
  protected:
    ImageDecoding() { OleInitialize(nullptr); }
    ~ImageDecoding() override { OleUninitialize(); }
    std::string file(const std::string& name) const { return folder.path(name); }

    template <typename... Pixels>
    std::string written(const std::string& name, Pixels... pixels) {
        writeImage(file(name), pixels...);
        return file(name);
    }
    // The image of one row that the pixels become in a PNG file.
    GreyImage row(const WICPixelFormatGUID& format, UINT width, std::vector<BYTE> pixels,
                  const GUID& container = GUID_ContainerFormatPng) {
        const auto bytes = static_cast<UINT>(pixels.size());
        return decodeImageFileByWic(written("row", container, format, width, 1, bytes, std::move(pixels)));
    }

    TemporaryFolder folder;
};

TEST_F(ImageDecoding, GreyColourAndTransparencyBecomeGrey) {
    const GreyImage grey =
        decodeImageFileByWic(written("grey.png", GUID_ContainerFormatPng, GUID_WICPixelFormat8bppGray, 3, 2,
                                     3, std::vector<BYTE>{0, 128, 255, 10, 20, 30}));
    ASSERT_EQ(grey.width(), 3);
    ASSERT_EQ(grey.height(), 2);
    EXPECT_EQ(grey(1, 0), 128);
    EXPECT_EQ(grey(2, 1), 30);

    const GreyImage deep = row(GUID_WICPixelFormat16bppGray, 2, {0x80, 0x80, 0xFF, 0xFF});
    EXPECT_NEAR(deep(0, 0), 128, 1);
    EXPECT_EQ(deep(1, 0), 255);

    for (const GUID& container :
         {GUID_ContainerFormatBmp, GUID_ContainerFormatTiff, GUID_ContainerFormatPng}) {
        const GreyImage colour =
            row(GUID_WICPixelFormat24bppBGR, 4, {255, 0, 0, 0, 255, 0, 0, 0, 255, 128, 128, 128}, container);
        EXPECT_LT(colour(0, 0), 50) << "blue";
        EXPECT_GT(colour(1, 0), 120) << "green";
        EXPECT_NEAR(colour(2, 0), 80, 15) << "red";
        EXPECT_NEAR(colour(3, 0), 128, 1) << "grey";
    }

    const GreyImage clear = row(GUID_WICPixelFormat32bppBGRA, 2, {0, 0, 0, 0, 0, 0, 0, 255});
    EXPECT_EQ(clear(0, 0), 255) << "transparent pixels stand on white";
    EXPECT_EQ(clear(1, 0), 0);
}

TEST_F(ImageDecoding, WhatIsNoImageIsNamed) {
    std::ofstream(toPath(file("text \u00e9.png"))) << "no image";
    for (const auto& [name, number] : {std::pair("absent.png", 53), {"text \u00e9.png", 5}}) {
        const Failure failure = failureOfAction([&] { decodeImageFileByWic(file(name)); });
        EXPECT_EQ(failure.number(), number);
        EXPECT_THAT(failure.description(), HasSubstr(name));
    }
    const std::string whole = written("whole.png", GUID_ContainerFormatPng, GUID_WICPixelFormat8bppGray, 64,
                                      64, 64, std::vector<BYTE>(64 * 64, 7));
    std::filesystem::resize_file(toPath(whole), 40);
    EXPECT_NE(refusal([&] { decodeImageFileByWic(whole); }), 0);
}

// Shrunk by averages, enlarged between pixels; a part is what the whole would show there.
TEST(GreyPictures, KeepThinStrokesAndAgreeInTheirParts) {
    GreyImage lines(100, 50, 255);
    for (int y = 0; y < 50; ++y) lines(33, y) = 0;
    const auto dark = [](Canvas& canvas) {
        int most = 0;
        for (const std::uint32_t pixel : canvas.pixels())
            most = std::max(most, 255 - static_cast<int>(pixel & 0xFF));
        return most;
    };
    const RECT small{10, 10, 35, 23};
    EXPECT_GT(dark(*greyPicture(lines, small, small)), 40);
    const RECT large{0, 0, 200, 100};
    const auto whole = greyPicture(lines, large, large);
    const auto part = greyPicture(lines, large, {50, 20, 90, 60});
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(part->pixels()[static_cast<std::size_t>(y * 40 + x)],
                      whole->pixels()[static_cast<std::size_t>((y + 20) * 200 + x + 50)]);
}

}  // namespace
}  // namespace dravik::test
