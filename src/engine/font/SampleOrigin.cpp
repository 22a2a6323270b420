#include "engine/font/SampleOrigin.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace dravik::engine {
namespace {

// A serial number, which image, the box, the picture's size and length.
constexpr std::size_t kLeastSize = 8 + 4 + 4 * 4 + 1 + 1 + 2;

SmallPicture decodePicture(ByteReader& in) {
    SmallPicture picture;
    picture.width = static_cast<std::uint8_t>(in.whole(1));
    picture.height = static_cast<std::uint8_t>(in.whole(1));
    const auto length = static_cast<std::size_t>(in.whole(2));
    in.check(picture.width <= kSmallPictureSide && picture.height <= kSmallPictureSide &&
                 (picture.width == 0) == (picture.height == 0) && length <= kLongestPackedPicture &&
                 (length == 0 || !picture.empty()),
             "a picture of a sample has no usable size");
    const auto bytes = in.take(length);
    picture.packed.assign(bytes.begin(), bytes.end());
    return picture;
}

Region decodeBox(ByteReader& in) {
    const std::int32_t left = in.i32(), top = in.i32(), right = in.i32(), bottom = in.i32();
    return {left, top, right, bottom};
}

}  // namespace

bool haveOrigins(std::span<const Sample> samples) {
    return std::any_of(samples.begin(), samples.end(),
                       [](const Sample& one) { return one.origin != nullptr; });
}

void encodeOrigins(ByteWriter& out, std::span<const Sample> samples) {
    std::map<std::pair<std::string_view, std::uint64_t>, std::size_t> places;  // from 1
    std::vector<const SourceImage*> images;
    std::vector<std::size_t> imageOf;
    // Samples of one image mostly follow each other.
    const SourceImage* last = nullptr;
    std::size_t lastPlace = 0;
    for (const Sample& sample : samples) {
        if (!sample.origin) continue;
        const SourceImage* image = sample.origin->image.get();
        if (image && image != last) {
            last = image;
            const auto [place, isNew] = places.try_emplace({image->name, image->digest}, images.size() + 1);
            if (isNew) images.push_back(image);
            lastPlace = place->second;
        }
        imageOf.push_back(image ? lastPlace : 0);
    }
    out.u32(images.size());
    for (const SourceImage* image : images) {
        out.countedText(image->name);
        out.u64(image->digest);
    }
    out.u32(imageOf.size());
    auto image = imageOf.begin();
    for (const Sample& sample : samples) {
        if (!sample.origin) continue;
        const SampleOrigin& origin = *sample.origin;
        out.u64(sample.serial);
        out.u32(*image++);
        for (const int edge : {origin.box.left, origin.box.top, origin.box.right, origin.box.bottom})
            out.i32(edge);
        out.whole(origin.picture.width, 1);
        out.whole(origin.picture.height, 1);
        out.whole(origin.picture.packed.size(), 2);
        out.raw(origin.picture.packed);
    }
}

void decodeOrigins(ByteReader& in, std::span<Sample> samples) {
    std::vector<std::shared_ptr<const SourceImage>> images;
    for (std::size_t left = in.count(12, samples.size()); left > 0; --left) {
        std::string name = in.countedText(kLongestImageName);
        images.push_back(std::make_shared<const SourceImage>(SourceImage{std::move(name), in.u64()}));
    }
    const std::size_t known = in.count(kLeastSize, samples.size());
    std::size_t place = 0, used = 0;
    for (std::size_t i = 0; i < known; ++i) {
        const std::uint64_t serial = in.u64();
        while (place < samples.size() && samples[place].serial < serial) ++place;
        in.check(place < samples.size() && samples[place].serial == serial && !samples[place].origin,
                 "a picture belongs to no sample");
        auto origin = std::make_shared<SampleOrigin>();
        const std::size_t image = in.u32();
        in.check(image <= std::min(used + 1, images.size()), "an image's name is not there");
        used = std::max(used, image);
        if (image > 0) origin->image = images[image - 1];
        origin->box = decodeBox(in);
        origin->picture = decodePicture(in);
        samples[place].origin = std::move(origin);
    }
    in.check(used == images.size(), "an image's name is not used");
}

}  // namespace dravik::engine
