#include "trainer/window/GallerySamples.h"

#include <algorithm>
#include <utility>

#include "base/NumberFormat.h"
#include "base/Text.h"
#include "engine/font/SampleOrigin.h"

namespace dravik::trainer {
namespace {

bool shows(const ShownSamples& shown, const engine::SampleColumns& samples, std::size_t place) {
    switch (shown.kind) {
        case ShownSamples::Kind::All:
            return true;
        case ShownSamples::Kind::Character:
            return samples.codes[place] == shown.code;
        case ShownSamples::Kind::Range:
            return samples.codes[place] == shown.code && samples.distances[place] >= shown.lower &&
                   samples.distances[place] <= shown.upper;
        case ShownSamples::Kind::Numbers:
        case ShownSamples::Kind::Misread:
            break;
    }
    return false;
}

ui::GreyPicture pictureOf(const engine::Sample& sample) {
    if (!sample.origin || sample.origin->picture.empty()) return {};
    const engine::GreyImage image = engine::unpacked(sample.origin->picture);
    ui::GreyPicture picture{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto row = image.row(y);
        picture.levels.insert(picture.levels.end(), row.begin(), row.end());
    }
    return picture;
}

}  // namespace

GallerySamples::GallerySamples(engine::SampleColumnsPtr samples, const ShownSamples& shown,
                               std::span<const engine::MisreadSample> misread)
    : samples_(std::move(samples)) {
    if (shown.kind == ShownSamples::Kind::Misread) {
        for (const engine::MisreadSample& one : misread) {
            // It may have been deleted or labelled anew since.
            const auto place = placeOfSerial(one.serial);
            if (!place || samples_->codes[*place] != one.code) continue;
            places_.push_back(*place);
            readAs_.push_back(one.readAs);
        }
        return;
    }
    for (const std::uint64_t serial : shown.serials)
        if (const auto place = placeOfSerial(serial)) places_.push_back(*place);
    if (shown.kind != ShownSamples::Kind::Numbers)
        for (std::uint32_t place = 0; place < samples_->size(); ++place)
            if (shows(shown, *samples_, place)) places_.push_back(place);
    std::stable_sort(places_.begin(), places_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return samples_->distances[a] > samples_->distances[b];
    });
}

std::optional<std::uint32_t> GallerySamples::placeOfSerial(std::uint64_t serial) const {
    const auto& all = samples_->samples;
    const auto found = std::lower_bound(
        all.begin(), all.end(), serial,
        [](const engine::Sample* sample, std::uint64_t wanted) { return sample->serial < wanted; });
    if (found == all.end() || (*found)->serial != serial) return std::nullopt;
    return static_cast<std::uint32_t>(found - all.begin());
}

ui::PictureItem GallerySamples::item(int index) const {
    const std::size_t place = placeOf(index);
    const engine::Sample& one = sample(index);
    const double distance = samples_->distances[place];
    ui::PictureItem item;
    item.picture = pictureOf(one);
    item.caption = characterOf(one.code);
    item.note = formatNumber(distance, "0.00");
    item.warns = distance >= kWarningDistance;
    if (!readAs_.empty()) {
        const std::string readAs = characterOf(readAs_[static_cast<std::size_t>(index)]);
        return {pictureOf(one), item.caption, "as " + readAs, true,
                item.caption + ", read as " + readAs + " in the held-out check"};
    }
    item.tip =
        item.caption + ", Distance " + formatNumber(distance, "0.000") + ", sample " + std::to_string(place);
    if (one.origin && one.origin->image) item.tip += ", from " + one.origin->image->name;
    return item;
}

}  // namespace dravik::trainer
