#include "trainer/labels/CorrectedLabels.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "base/Text.h"
#include "engine/font/SampleOrigin.h"

namespace dravik::trainer {
namespace {

struct ImageSample {
    std::int64_t serial = 0;
    std::string character;
    std::optional<std::string> characterAfter{};  // where it is another one
};

// Samples of the images of which one has another character after the change.
std::map<std::string, std::vector<ImageSample>> relabelledImages(const engine::SampleColumns& before,
                                                                 const engine::SampleColumns& after) {
    std::map<std::string, std::vector<ImageSample>> images;
    std::vector<std::optional<std::int32_t>> codesAfter(before.size());
    for (std::size_t place = 0, other = 0; place < before.size(); ++place) {
        const std::uint64_t serial = before.samples[place]->serial;
        while (other < after.size() && after.samples[other]->serial < serial) ++other;
        if (other >= after.size() || after.samples[other]->serial != serial ||
            after.codes[other] == before.codes[place])
            continue;
        codesAfter[place] = after.codes[other];
        if (const auto& origin = before.samples[place]->origin; origin && origin->image)
            images[origin->image->name];
    }
    for (std::size_t place = 0; place < before.size() && !images.empty(); ++place) {
        const engine::Sample& sample = *before.samples[place];
        if (!sample.origin || !sample.origin->image) continue;
        const auto image = images.find(sample.origin->image->name);
        if (image == images.end()) continue;
        ImageSample& one = image->second.emplace_back();
        one.serial = static_cast<std::int64_t>(sample.serial);
        one.character = characterOf(before.codes[place]);
        if (codesAfter[place]) one.characterAfter = characterOf(*codesAfter[place]);
    }
    return images;
}

// The serial number that the sample of the text's first character has or had: an include numbers its samples
// in the order of the text, and some may have been deleted since. Nothing when several may be it.
std::optional<std::int64_t> firstSerial(const std::vector<std::string>& text,
                                        const std::vector<ImageSample>& samples) {
    const auto relabelled = std::find_if(samples.begin(), samples.end(),
                                         [](const ImageSample& one) { return !!one.characterAfter; });
    const auto length = static_cast<std::int64_t>(text.size());
    std::optional<std::int64_t> best;
    std::int64_t most = 0;
    for (std::int64_t place = 0; place < length; ++place) {
        const std::int64_t first = relabelled->serial - place;
        std::int64_t same = 0;
        const bool fits = std::all_of(samples.begin(), samples.end(), [&](const ImageSample& one) {
            const std::int64_t at = one.serial - first;
            if (at < 0 || at >= length) return true;  // the image was included more than once
            ++same;
            return text[static_cast<std::size_t>(at)] == one.character;
        });
        if (!fits || same < most) continue;
        best = same > most ? std::optional(first) : std::nullopt;
        most = same;
    }
    return best;
}

}  // namespace

std::vector<CorrectedLabel> correctedLabels(
    const engine::SampleColumns& before, const engine::SampleColumns& after,
    const std::function<std::optional<std::string>(const std::string&)>& textOf) {
    std::vector<CorrectedLabel> corrected;
    for (const auto& [image, samples] : relabelledImages(before, after)) {
        const std::optional<std::string> known = textOf(image);
        if (!known) continue;
        std::vector<std::string> text = characters(*known);
        std::erase(text, " ");
        const auto first = firstSerial(text, samples);
        if (!first) continue;
        for (const ImageSample& one : samples) {
            const std::int64_t at = one.serial - *first;
            if (one.characterAfter && at >= 0 && at < static_cast<std::int64_t>(text.size()))
                text[static_cast<std::size_t>(at)] = *one.characterAfter;
        }
        CorrectedLabel& label = corrected.emplace_back();
        label.image = image;
        for (const std::string& character : text) label.text += character;
    }
    return corrected;
}

}  // namespace dravik::trainer
