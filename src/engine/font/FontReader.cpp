#include "engine/font/FontReader.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/StableSort.h"
#include "base/Text.h"
#include "engine/classifier/SceneReading.h"
#include "engine/font/SampleOrigin.h"

namespace dravik::engine {
namespace {

std::vector<const Sample*> pointers(std::span<const Sample> samples) {
    std::vector<const Sample*> all;
    all.reserve(samples.size());
    for (const Sample& sample : samples) all.push_back(&sample);
    return all;
}

ClassStatistics statisticsOf(std::span<const Sample> samples) {
    ClassStatistics statistics;
    for (const Sample& sample : samples) statistics.add(sample);
    return statistics;
}

// Of the lines of the images that samples come from, as far as these are known: samples of an image follow
// each other from left to right, line by line.
TextFormats formatsOf(std::span<const Sample* const> samples) {
    TextFormats formats;
    std::string line;
    const SampleOrigin* last = nullptr;
    for (const Sample* sample : samples) {
        const SampleOrigin* origin = sample->origin && sample->origin->image ? sample->origin.get() : nullptr;
        const bool goesOn =
            last && origin && last->image == origin->image && last->box.left < origin->box.left;
        if (!goesOn) formats.add(std::exchange(line, {}));
        if (origin) line += characterOf(sample->code);
        last = origin;
    }
    formats.add(line);
    return formats;
}

ReadCharacter readCharacter(const PlacedRecognition& one) {
    ReadCharacter result{foundCharacter(one.place, one.line), characterOf(one.read.best.code),
                         confidence(one.read.best.evidence)};
    result.alternatives.reserve(one.read.others.size());
    for (const CharacterEvidence& other : one.read.others)
        result.alternatives.push_back({characterOf(other.code), confidence(other.evidence)});
    stableSort(result.alternatives.begin(), result.alternatives.end(),
               [](const Alternative& a, const Alternative& b) { return a.confidence > b.confidence; });
    return result;
}

}  // namespace

FoundCharacter foundCharacter(const Region& place, int line) {
    return {place.left, place.top, place.right, place.bottom, line};
}

std::string shownCharacter(const ReadCharacter& read, double limit) {
    return read.confidence < limit ? kUnknownCharacter : read.character;
}

FontReader::FontReader(const FontRecord& font)
    : FontReader(font.training.network, statisticsOf(font.samples), pointers(font.samples), font.settings) {}

FontReader::FontReader(Network network, const ClassStatistics& statistics,
                       std::span<const Sample* const> samples, const SegmentationSettings& settings,
                       Context context)
    : network_(std::move(network)),
      measure_(statistics, samples),
      formats_(formatsOf(samples)),
      settings_(settings),
      context_(context) {}

std::vector<std::string> FontReader::characters() const {
    std::vector<std::string> result;
    for (const std::int32_t code : network_.codes) result.push_back(characterOf(code));
    return result;
}

std::vector<ReadCharacter> FontReader::read(const GreyImage& image,
                                            const SegmentationSettings& settings) const {
    if (network_.empty()) return {};
    // The scene does not outlive the image.
    return read(
        findScene(std::shared_ptr<const GreyImage>(std::shared_ptr<const GreyImage>(), &image), settings));
}

std::vector<ReadCharacter> FontReader::read(const Scene& found, const std::stop_token& stop) const {
    std::vector<ReadCharacter> result;
    if (network_.empty()) return result;
    for (const PlacedRecognition& one : readScene(found, {network_, measure_, context_, &formats_}, stop))
        result.push_back(readCharacter(one));
    return result;
}

}  // namespace dravik::engine
