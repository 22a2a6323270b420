#include "trainer/labels/IncludedImages.h"

#include <algorithm>
#include <utility>

namespace dravik::trainer {
namespace {

void moveLast(const std::string& font, std::vector<IncludedImages::Image>& from,
              std::vector<IncludedImages::Image>& to) {
    const auto last =
        std::find_if(from.rbegin(), from.rend(), [&](const auto& image) { return image.font == font; });
    if (last == from.rend()) return;
    to.push_back(std::move(*last));
    from.erase(last.base() - 1);
}

}  // namespace

std::uint64_t digestOf(const engine::GreyImage& image) {
    std::uint64_t digest = 0xcbf29ce484222325u;  // FNV-1a
    const auto add = [&](std::uint64_t value) { digest = (digest ^ value) * 0x100000001b3u; };
    add(static_cast<std::uint64_t>(image.width()));
    for (int y = 0; y < image.height(); ++y)
        for (const std::uint8_t pixel : image.row(y)) add(pixel);
    return digest;
}

void IncludedImages::add(Image image) {
    std::erase_if(takenBack_, [&](const Image& one) { return one.font == image.font; });
    images_.push_back(std::move(image));
}

const IncludedImages::Image* IncludedImages::find(const std::string& font, std::uint64_t digest) const {
    const auto found = std::find_if(images_.begin(), images_.end(), [&](const Image& image) {
        return image.digest == digest && image.font == font;
    });
    return found == images_.end() ? nullptr : &*found;
}

bool IncludedImages::has(const std::string& font, const std::string& path) const {
    return std::any_of(images_.begin(), images_.end(),
                       [&](const Image& image) { return image.path == path && image.font == font; });
}

void IncludedImages::takeBack(const std::string& font) {
    moveLast(font, images_, takenBack_);
}

void IncludedImages::doAgain(const std::string& font) {
    moveLast(font, takenBack_, images_);
}

}  // namespace dravik::trainer
