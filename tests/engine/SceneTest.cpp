// Print on a whole part: the shipped images of lines pasted into larger pictures, beside other things and
// turned.
#include "engine/scene/Scene.h"

#include <stop_token>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/classifier/SceneReading.h"
#include "support/Testing.h"

namespace dravik {
namespace {

const std::string kLines = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/rendered_lines";

// A picture that is being put together, in the levels of an image of print.
struct Plate {
    GreyImage picture;
    int left = 0, top = 0, width = 0, height = 0;  // of the image in it
    std::uint8_t paper = 0, ink = 0;

    void fill(int x0, int y0, int x1, int y1, std::uint8_t level) {
        for (int y = std::max(0, y0); y < std::min(picture.height(), y1); ++y)
            for (int x = std::max(0, x0); x < std::min(picture.width(), x1); ++x) picture(x, y) = level;
    }
};

// The image in the middle of paper, whose level goes over to that of the image's own border.
Plate onPaper(const GreyImage& image) {
    std::vector<std::uint8_t> border, all;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            all.push_back(image(x, y));
            if (x == 0 || y == 0 || x + 1 == image.width() || y + 1 == image.height())
                border.push_back(image(x, y));
        }
    std::sort(border.begin(), border.end());
    std::sort(all.begin(), all.end());
    Plate plate;
    plate.paper = border[border.size() / 2];
    const std::uint8_t low = all[all.size() / 100], high = all[all.size() - 1 - all.size() / 100];
    plate.ink = plate.paper - low > high - plate.paper ? low : high;
    plate.width = image.width();
    plate.height = image.height();
    plate.left = plate.width / 2;
    plate.top = 4 * plate.height;
    plate.picture = GreyImage(2 * plate.width, 9 * plate.height, plate.paper);
    constexpr int kSoft = 6;
    for (int y = 0; y < plate.height; ++y)
        for (int x = 0; x < plate.width; ++x) {
            const int edge = std::min({x, y, plate.width - 1 - x, plate.height - 1 - y, kSoft});
            plate.picture(plate.left + x, plate.top + y) =
                static_cast<std::uint8_t>((image(x, y) * edge + plate.paper * (kSoft - edge)) / kSoft);
        }
    return plate;
}

void addBarcode(Plate& plate) {
    const int height = plate.height, top = plate.top - height / 2 - height;
    int x = plate.left;
    for (int k = 0; x < plate.left + plate.width; ++k) {
        const int bar = 2 + (k * 7) % 5;
        plate.fill(x, top, x + bar, top + height, plate.ink);
        x += bar + 2 + (k * 5) % 4;
    }
}

void addSquares(Plate& plate) {
    std::mt19937 random(3);
    const int module = std::max(3, plate.height / 9), top = plate.top - plate.height / 2;
    for (int r = 0; r < 14; ++r)
        for (int c = 0; c < 14; ++c)
            if (c == 0 || r == 13 || random() % 2)
                plate.fill(plate.left - (16 - c) * module, top + r * module, plate.left - (15 - c) * module,
                           top + (r + 1) * module, plate.ink);
}

void addFrame(Plate& plate) {
    const int l = plate.left - 6, t = plate.top - 6, r = plate.left + plate.width + 6,
              b = plate.top + plate.height + 6;
    plate.fill(l, t, r, t + 3, plate.ink);
    plate.fill(l, b - 3, r, b, plate.ink);
    plate.fill(l, t, l + 3, b, plate.ink);
    plate.fill(r - 3, t, r, b, plate.ink);
}

GreyImage turned(const Plate& plate, float degrees) {
    const float angle = degrees * 0.0174533f, c = std::cos(angle), s = std::sin(angle);
    const GreyImage& from = plate.picture;
    GreyImage result(from.width(), from.height(), plate.paper);
    const float midX = 0.5f * static_cast<float>(from.width()),
                midY = 0.5f * static_cast<float>(from.height());
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x) {
            const float dx = static_cast<float>(x) + 0.5f - midX, dy = static_cast<float>(y) + 0.5f - midY;
            const float u = midX + c * dx + s * dy - 0.5f, v = midY - s * dx + c * dy - 0.5f;
            const int col = static_cast<int>(std::floor(u)), row = static_cast<int>(std::floor(v));
            if (col < 0 || row < 0 || col + 1 >= from.width() || row + 1 >= from.height()) continue;
            const float across = u - static_cast<float>(col), down = v - static_cast<float>(row);
            result(x, y) = static_cast<std::uint8_t>((static_cast<float>(from(col, row)) * (1 - across) +
                                                      static_cast<float>(from(col + 1, row)) * across) *
                                                         (1 - down) +
                                                     (static_cast<float>(from(col, row + 1)) * (1 - across) +
                                                      static_cast<float>(from(col + 1, row + 1)) * across) *
                                                         down);
        }
    return result;
}

Scene sceneOf(const GreyImage& picture) {
    return findScene(std::make_shared<GreyImage>(picture));
}

TEST(Scene, PrintIsFoundBesideOtherThingsAndTurned) {
    struct Arrangement {
        const char* name;
        std::function<void(Plate&)> add;
        float degrees;
        int required;  // pictures with the exact number of characters
    };
    for (const Arrangement& arrangement :
         {Arrangement{"alone", [](Plate&) {}, 0, 11}, Arrangement{"turned", [](Plate&) {}, 17, 12},
          Arrangement{"steep", [](Plate&) {}, -38, 12}, Arrangement{"barcode", addBarcode, -9, 12},
          Arrangement{"squares", addSquares, 6, 12}, Arrangement{"framed", addFrame, 12, 12}}) {
        int number = 0, images = 0, exact = 0;
        for (const LabelledImage& one : labelledImages(kLines)) {
            if (one.font.starts_with("dot") || ++number % 3 != 0) continue;
            ++images;
            Plate plate = onPaper(readPng(one.file));
            arrangement.add(plate);
            const std::size_t found = sceneOf(turned(plate, arrangement.degrees)).characters();
            exact += found == characterCount(one.text);
            if (found != characterCount(one.text))
                std::printf("%s, %s: %zu of %zu\n", one.name.c_str(), arrangement.name, found,
                            characterCount(one.text));
        }
        EXPECT_EQ(images, 13);
        EXPECT_GE(exact, arrangement.required) << arrangement.name;
    }
}

// A character's box holds its ink, wherever the line stands and however it is turned; lines are numbered
// through all parts.
TEST(Scene, PlacesAndLinesAreThoseOfTheWholePicture) {
    Plate plate;
    plate.paper = 200;
    plate.picture = GreyImage(900, 700, 200);
    std::vector<std::pair<int, int>> places;
    constexpr int kEach = 8;
    for (int k = 0; k < 2 * kEach; ++k) {
        const int x = 300 + 40 * (k % kEach), y = 300 + 70 * (k / kEach);
        plate.fill(x, y, x + 5, y + 36, 30);
        plate.fill(x, y, x + 24, y + 5, 30);
        plate.fill(x, y + 31, x + 24, y + 36, 30);
        places.emplace_back(x + 12, y + 18);
    }
    const Scene scene = sceneOf(turned(plate, 20));
    const std::vector<PlacedGlyph> found = allPlaces(scene);
    ASSERT_EQ(found.size(), places.size());
    const float c = std::cos(0.349066f), s = std::sin(0.349066f);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Region& box = found[i].place;
        const float dx = static_cast<float>(places[i].first) - 450,
                    dy = static_cast<float>(places[i].second) - 350;
        EXPECT_NEAR(0.5f * static_cast<float>(box.left + box.right), 450 + c * dx - s * dy, 4);
        EXPECT_NEAR(0.5f * static_cast<float>(box.top + box.bottom), 350 + s * dx + c * dy, 4);
        EXPECT_LT(box.width(), 48);
        EXPECT_EQ(found[i].line, static_cast<int>(i) / kEach);
    }
}

// Upright, on its head and on its side, with a barcode so near that without the region it joins the print.
TEST(Scene, OfARegionOnlyWhatIsInItIsSeenTurnedUpright) {
    for (const float degrees : {25.0f, -38.0f, 90.0f, 180.0f}) {
        int number = 0, images = 0, exact = 0;
        for (const LabelledImage& one : labelledImages(kLines)) {
            if (one.font.starts_with("dot") || ++number % 5 != 0) continue;
            ++images;
            Plate plate = onPaper(readPng(one.file));
            addBarcode(plate);
            addFrame(plate);
            const auto picture = std::make_shared<GreyImage>(turned(plate, degrees));
            const RotatedBox region{
                0.5f * static_cast<float>(picture->width()), 0.5f * static_cast<float>(picture->height()),
                static_cast<float>(plate.width), static_cast<float>(plate.height), degrees};
            const Scene scene = findScene(picture, {.region = region});
            exact += scene.characters() == characterCount(one.text);
            for (const PlacedGlyph& glyph : allPlaces(scene))
                EXPECT_TRUE(
                    region.contains({0.5f * static_cast<float>(glyph.place.left + glyph.place.right),
                                     0.5f * static_cast<float>(glyph.place.top + glyph.place.bottom)}));
        }
        EXPECT_EQ(images, 8);
        EXPECT_GE(exact, 7) << degrees;
    }
}

TEST(Scene, SearchEndsOnceAStopIsRequested) {
    std::stop_source stop;
    stop.request_stop();
    const auto image = std::make_shared<GreyImage>(readPng(kLines + "/hack_000.png"));
    const auto onPart = std::make_shared<GreyImage>(turned(onPaper(*image), 30));
    for (const auto& picture : {image, onPart}) {
        EXPECT_EQ(findScene(picture, {}, stop.get_token()).characters(), 0u);
        EXPECT_GT(findScene(picture).characters(), 0u);
    }
}

TEST(Scene, NoiseAndTextureHaveNoLines) {
    std::mt19937 random(11);
    for (const int kind : {0, 1, 2}) {
        GreyImage picture(1600, 1250);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture(x, y) =
                    kind == 0   ? static_cast<std::uint8_t>(random())
                    : kind == 1 ? static_cast<std::uint8_t>((x / 3 + y / 3) % 2 ? 210 : 60)
                                : static_cast<std::uint8_t>(128 + 90 * std::sin(0.7 * x) * std::sin(0.5 * y));
        EXPECT_EQ(sceneOf(picture).characters(), 0u) << kind;
    }
}

}  // namespace
}  // namespace dravik
