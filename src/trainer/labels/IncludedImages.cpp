#include "trainer/labels/IncludedImages.h"

#include "engine/font/SampleOrigin.h"

namespace dravik::trainer {

std::uint64_t digestOf(const engine::GreyImage& image) {
    std::uint64_t digest = 0xcbf29ce484222325u;  // FNV-1a
    const auto add = [&](std::uint64_t value) { digest = (digest ^ value) * 0x100000001b3u; };
    add(static_cast<std::uint64_t>(image.width()));
    for (int y = 0; y < image.height(); ++y)
        for (const std::uint8_t pixel : image.row(y)) add(pixel);
    return digest == 0 ? 1 : digest;
}

IncludedImages::IncludedImages(const engine::SampleColumns& samples) {
    const engine::SourceImage* last = nullptr;
    for (const engine::Sample* sample : samples.samples) {
        const engine::SourceImage* image = sample->origin ? sample->origin->image.get() : nullptr;
        if (!image || image == last) continue;
        last = image;
        paths_.insert(image->name);
        if (image->digest == 0)
            unknown_.insert(image->name);
        else
            byDigest_.emplace(image->digest, image->name);
    }
}

std::string IncludedImages::same(const std::string& path, std::uint64_t digest) const {
    if (unknown_.contains(path)) return path;
    const auto found = byDigest_.find(digest);
    if (found == byDigest_.end()) return {};
    return paths_.contains(path) ? path : found->second;
}

}  // namespace dravik::trainer
