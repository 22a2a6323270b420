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
            return std::binary_search(shown.serials.begin(), shown.serials.end(),
                                      samples.samples[place]->serial);
        case ShownSamples::Kind::Misread:
            return false;
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
            const auto found = std::lower_bound(
                samples_->samples.begin(), samples_->samples.end(), one.serial,
                [](const engine::Sample* sample, std::uint64_t serial) { return sample->serial < serial; });
            // It may have been deleted or labelled anew since.
            if (found == samples_->samples.end() || (*found)->serial != one.serial ||
                (*found)->code != one.code)
                continue;
            places_.push_back(static_cast<std::uint32_t>(found - samples_->samples.begin()));
            readAs_.push_back(one.readAs);
        }
        return;
    }
    for (std::size_t place = 0; place < samples_->size(); ++place)
        if (shows(shown, *samples_, place)) places_.push_back(static_cast<std::uint32_t>(place));
    std::stable_sort(places_.begin(), places_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return samples_->distances[a] > samples_->distances[b];
    });
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

int GallerySamples::indexOf(std::uint64_t serial) const {
    for (int index = 0; index < count(); ++index)
        if (sample(index).serial == serial) return index;
    return -1;
}

}  // namespace dravik::trainer
