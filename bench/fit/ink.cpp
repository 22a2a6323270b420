// Makes the pictures that the network of ink is fitted on: part images in hundreds of faces under all
// conditions, mostly the worst, brought to a size at which capitals are 10 to 34 pixels high, and what of
// each is print.
//
//     dravik_ink FACES FOLDER IMAGES SEED [FIRST]
//
// Writes FOLDER/pictures.bin, for each picture: its width and height (two bytes each, the lower one first),
// its kind of face (a byte), its pixels row by row, and how much of each is print, 0 to 255. Image FIRST and
// those after it depend on SEED and their number alone.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "engine/image/Thumbnail.h"
#include "engine/recogniser/InkNetwork.h"
#include "fit/FittingImages.h"

namespace dravik {

using namespace engine;
namespace {

constexpr FittingShares kShares{.touching = 0.1f, .usual = 0.2f, .learning = 0.08f};
// Of larger pictures a part is taken.
constexpr int kMostWidth = 320, kMostHigh = 160;

class Output {
  public:
    explicit Output(const std::string& folder) : pictures_(folder + "/pictures.bin", std::ios::binary) {
        if (!pictures_) throw std::runtime_error("Cannot write to " + folder);
    }
    void add(const GreyImage& image, const GreyImage& whole, const Region& part, FaceKind kind) {
        const int width = part.width(), height = part.height();
        const char head[5] = {static_cast<char>(width & 255), static_cast<char>(width >> 8),
                              static_cast<char>(height & 255), static_cast<char>(height >> 8),
                              static_cast<char>(kind)};
        pictures_.write(head, 5);
        for (const GreyImage* one : {&image, &whole})
            for (int y = part.top; y < part.bottom; ++y)
                pictures_.write(reinterpret_cast<const char*>(one->row(y).data()) + part.left, width);
    }

  private:
    std::ofstream pictures_;
};

void addPicture(const FittingImage& image, Output& output, Random& random) {
    const GreyImage &seen = image.picture.image, &whole = image.picture.whole;
    const float scale =
        std::min(1.0f, random.size(kLeastInkHeight, kMostInkHeight) / image.conditions.style.capHeight);
    const int side =
        static_cast<int>(std::lround(scale * static_cast<float>(std::max(seen.width(), seen.height()))));
    const GreyImage smallSeen = thumbnailOf(seen, side), smallWhole = thumbnailOf(whole, side);
    const int width = std::min(kMostWidth, smallSeen.width()),
              height = std::min(kMostHigh, smallSeen.height());
    const int left = random.whole(0, smallSeen.width() - width),
              top = random.whole(0, smallSeen.height() - height);
    output.add(smallSeen, smallWhole, {left, top, left + width, top + height}, image.kind);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    return dravik::ofFittingImages<dravik::Output>(argc, argv, dravik::kShares, dravik::addPicture);
}
