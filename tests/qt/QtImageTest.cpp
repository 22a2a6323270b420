// Image files of every sort become grey images, and what cannot be read is refused in words that name the
// file.

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "qt/QtImage.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
using namespace qt;
namespace {

class QtImageTest : public testing::Test {
  protected:
    std::string write(const char* name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName().toStdString();
    }
    std::string save(const char* name, const QImage& image) const {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(image.save(path));
        return path.toStdString();
    }
    static std::string refusal(const std::string& path) {
        return test::failureOfAction([&] { decodeImageFile(path); }).description();
    }

    const QTemporaryDir folder;
};

TEST_F(QtImageTest, ColourAndTransparencyBecomeGrey) {
    QImage colour(3, 1, QImage::Format_ARGB32);
    colour.setPixelColor(0, 0, QColor(0, 255, 0));
    colour.setPixelColor(1, 0, QColor(0, 0, 255));
    colour.setPixelColor(2, 0, QColor(0, 0, 0, 0));
    const GreyImage grey = decodeImageFile(save("colour.png", colour));
    EXPECT_GT(grey(0, 0), grey(1, 0) + 50);  // green is brighter than blue
    EXPECT_EQ(grey(2, 0), 255);

    // Rows that do not fill their bytes, and more of them than are converted at once.
    QImage palette(5, 150, QImage::Format_Mono);
    palette.fill(0);
    palette.setPixel(4, 1, 1);
    palette.setPixel(0, 149, 1);
    const GreyImage mono = decodeImageFile(save("mono.bmp", palette));
    EXPECT_EQ(toQImage(mono).convertToFormat(QImage::Format_RGB32),
              palette.convertToFormat(QImage::Format_RGB32));
}

TEST_F(QtImageTest, TurnedPhotographsStandUpright) {
    QImage image(40, 20, QImage::Format_Grayscale8);
    image.fill(Qt::black);
    QFile file(QString::fromStdString(save("photo.jpg", image)));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    // An orientation tag of 6: turn by 90 degrees to see it upright.
    const QByteArray exif = QByteArray::fromHex(
        "ffe10022457869660000"
        "4d4d002a00000008"
        "0001"
        "011200030000000100060000"
        "00000000");
    bytes.insert(2, exif);
    const GreyImage turned = decodeImageFile(write("turned.jpg", bytes));
    EXPECT_EQ(turned.width(), 20);
    EXPECT_EQ(turned.height(), 40);
}

TEST_F(QtImageTest, WhatCannotBeReadIsNamed) {
    EXPECT_EQ(refusal(folder.filePath("absent.png").toStdString()), "absent.png: file not found");
    EXPECT_EQ(refusal(folder.path().toStdString()).substr(folder.path().section('/', -1).size()),
              ": is a folder");
    EXPECT_EQ(refusal("/dev/zero"), "zero: is no file");
    EXPECT_EQ(refusal(write("text.png", "this is no image")), "text.png: not an image that can be read");
    EXPECT_EQ(refusal(write("empty.png", "")), "empty.png: not an image that can be read");

    QImage good(50, 50, QImage::Format_Grayscale8);
    good.fill(Qt::gray);
    QFile file(QString::fromStdString(save("good.png", good)));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(refusal(write("cut.png", file.readAll().left(50))).starts_with("cut.png: "))
        << "a cut-off image";

    // A header that promises 100000 x 1000 pixels, refused before any memory is taken for them.
    QByteArray huge(54, '\0');
    huge.replace(0, 2, "BM");
    huge[10] = 54;
    huge[14] = 40;
    const auto put = [&](int at, quint32 value) {
        for (int i = 0; i < 4; ++i) huge[at + i] = static_cast<char>(value >> (8 * i));
    };
    put(18, 100000);
    put(22, 1000);
    huge[26] = 1;
    huge[28] = 24;
    EXPECT_EQ(refusal(write("huge.bmp", huge)),
              "huge.bmp: the image of 100000 x 1000 pixels is larger than 64 megapixels");
}

}  // namespace
}  // namespace dravik
